#include "platform/linux/x11/XcbEventSource.h"

#include <QAbstractEventDispatcher>

namespace brimwick {

XcbEventSource::XcbEventSource(XcbConnection& connection, Handler handler)
    : connection_(connection), handler_(std::move(handler)),
      readable_(xcb_get_file_descriptor(connection.get()), QSocketNotifier::Read) {
    connect(&readable_, &QSocketNotifier::activated, this, [this] { drain(); });
    // A reply read elsewhere can leave events in xcb's queue with nothing left to read on the socket.
    connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this,
            [this] { drain(); });
}

void XcbEventSource::drain() {
    while (const XcbOwned<xcb_generic_event_t> event{xcb_poll_for_event(connection_.get())}) handler_(*event);
    // A connection that broke stays readable for ever.
    if (connection_.isBroken()) readable_.setEnabled(false);
}

} // namespace brimwick
