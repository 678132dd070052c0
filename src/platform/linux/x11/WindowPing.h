#pragma once

#include "platform/linux/x11/EventPump.h"

#include <optional>

namespace brimwick {

/// Asks a window's program for a sign of life, which it gives when it has taken in all that was sent to it
/// before.
class WindowPing {
  public:
    /// The connection must outlive the ping, and its events must be handed to `handle`.
    explicit WindowPing(XcbConnection& connection) : connection_(connection) {}

    void send(xcb_window_t window, xcb_timestamp_t time);
    void handle(const xcb_generic_event_t& event);
    /// When the answer to the last ping came.
    std::optional<Deadline> answered() const { return answered_; }

  private:
    void listen(bool on);

    XcbConnection& connection_;
    xcb_window_t window_ = XCB_NONE;
    xcb_timestamp_t time_ = XCB_CURRENT_TIME;
    std::optional<Deadline> answered_;
};

} // namespace brimwick
