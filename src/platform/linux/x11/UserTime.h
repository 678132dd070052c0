#pragma once

#include <xcb/xcb.h>

#include <cstdint>

namespace brimwick {

/// The X server's time of the user's last request, by which window managers judge who may take the focus.
/// Written by whoever hears of a request. Main thread only.
class UserTime {
  public:
    void note(xcb_timestamp_t time) {
        // The server's clock wraps round every 49 days.
        const bool newer = static_cast<std::int32_t>(time - latest_) > 0;
        if (latest_ == XCB_CURRENT_TIME || newer) latest_ = time;
    }
    /// A request came by a way that carries no time, such as D-Bus. It counts as made now until the next is
    /// noted.
    void noteUntimed() { latest_ = XCB_CURRENT_TIME; }
    /// XCB_CURRENT_TIME when the last request's time is not known.
    xcb_timestamp_t latest() const { return latest_; }

  private:
    xcb_timestamp_t latest_ = XCB_CURRENT_TIME;
};

} // namespace brimwick
