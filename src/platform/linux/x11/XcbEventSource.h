#pragma once

#include "platform/linux/x11/XcbConnection.h"

#include <QObject>
#include <QSocketNotifier>

#include <functional>

namespace brimwick {

/// Hands the events of a connection to the main loop. Made and used on the main thread.
class XcbEventSource : public QObject {
  public:
    using Handler = std::function<void(const xcb_generic_event_t&)>;

    /// The connection must outlive the source. When the connection breaks, `broken` is called once.
    XcbEventSource(XcbConnection& connection, Handler handler, std::function<void()> broken = {});
    /// Handles what has arrived. To be called after waiting for a reply, which may have taken events in.
    void drain();

  private:
    XcbConnection& connection_;
    Handler handler_;
    std::function<void()> broken_;
    QSocketNotifier readable_;
};

} // namespace brimwick
