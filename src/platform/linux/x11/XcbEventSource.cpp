#include "platform/linux/x11/XcbEventSource.h"

#include <QAbstractEventDispatcher>

namespace brimwick {

XcbEventSource::XcbEventSource(XcbConnection& connection, Handler handler, std::function<void()> broken)
    : connection_(connection), handler_(std::move(handler)), broken_(std::move(broken)),
      readable_(xcb_get_file_descriptor(connection.get()), QSocketNotifier::Read) {
    connect(&readable_, &QSocketNotifier::activated, this, [this] { drain(); });
    // A reply read elsewhere can leave events in xcb's queue with nothing left to read on the socket.
    connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this,
            [this] { drain(); });
}

void XcbEventSource::drain() {
    while (const XcbOwned<xcb_generic_event_t> event{xcb_poll_for_event(connection_.get())}) handler_(*event);
    if (!connection_.isBroken() || !readable_.isEnabled()) return;
    // A connection that broke stays readable for ever.
    readable_.setEnabled(false);
    if (broken_) broken_();
}

} // namespace brimwick
