#pragma once

#include "platform/linux/process/WakeUp.h"
#include "platform/linux/x11/XcbConnection.h"

#include <chrono>
#include <functional>

namespace brimwick {

using Deadline = std::chrono::steady_clock::time_point;

/// The deadline that lies this far ahead.
inline Deadline in(std::chrono::milliseconds time) {
    return std::chrono::steady_clock::now() + time;
}

/// Waits on a connection for what the X server or another client will do; every event that arrives meanwhile
/// goes to the handler. Used on the thread that uses the connection.
class EventPump {
  public:
    using Handler = std::function<void(const xcb_generic_event_t&)>;

    /// The connection and the wake-up must outlive the pump. The wake-up, if there is one, ends a sleep, so
    /// that the condition is looked at again.
    EventPump(XcbConnection& connection, Handler handler, const WakeUp* wakeUp = nullptr);

    /// False when the time is up, or the connection broke, before the condition held.
    bool until(const std::function<bool()>& condition, Deadline deadline);
    /// Hands over what has arrived; true when that was anything.
    bool drain();
    /// A hidden window of this connection, to ask and to be asked with.
    xcb_window_t window() const { return window_; }
    /// The server's time now; XCB_CURRENT_TIME when it does not answer.
    xcb_timestamp_t serverTime();

  private:
    void sleepUntil(Deadline deadline) const;

    XcbConnection& connection_;
    Handler handler_;
    const WakeUp* wakeUp_;
    xcb_window_t window_ = XCB_NONE;
    xcb_atom_t timeProperty_ = XCB_ATOM_NONE;
    xcb_timestamp_t lastTime_ = XCB_CURRENT_TIME;
};

} // namespace brimwick
