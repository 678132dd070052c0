#include "platform/linux/x11/EventPump.h"

#include "platform/linux/x11/XcbEvents.h"

#include <poll.h>

#include <algorithm>
#include <array>
#include <climits>

namespace brimwick {

using std::chrono::milliseconds;

EventPump::EventPump(XcbConnection& connection, Handler handler, const WakeUp* wakeUp)
    : connection_(connection), handler_(std::move(handler)), wakeUp_(wakeUp),
      window_(xcb_generate_id(connection.get())), timeProperty_(connection.atom("BRIMWICK_TIME")) {
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(connection_.get(), XCB_COPY_FROM_PARENT, window_, connection_.root(), -10, -10, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
}

bool EventPump::until(const std::function<bool()>& condition, Deadline deadline) {
    for (;;) {
        drain();
        if (condition()) return true;
        if (connection_.isBroken() || std::chrono::steady_clock::now() >= deadline) return false;
        // Waiting for a reply, and even sending, can take events in, with nothing left to wake the sleep.
        xcb_flush(connection_.get());
        if (drain()) continue;
        sleepUntil(deadline);
    }
}

bool EventPump::drain() {
    bool any = false;
    while (const XcbOwned<xcb_generic_event_t> event{xcb_poll_for_event(connection_.get())}) {
        any = true;
        const auto* property = eventAs<xcb_property_notify_event_t>(*event, XCB_PROPERTY_NOTIFY);
        if (property != nullptr && property->window == window_ && property->atom == timeProperty_)
            lastTime_ = property->time;
        else
            handler_(*event);
    }
    return any;
}

void EventPump::sleepUntil(Deadline deadline) const {
    std::array<pollfd, 2> descriptors{{{xcb_get_file_descriptor(connection_.get()), POLLIN, 0},
                                       {wakeUp_ != nullptr ? wakeUp_->descriptor() : -1, POLLIN, 0}}};
    const auto left = std::chrono::ceil<milliseconds>(deadline - std::chrono::steady_clock::now()).count();
    poll(descriptors.data(), descriptors.size(), static_cast<int>(std::clamp<long>(left, 0, INT_MAX)));
    if (wakeUp_ != nullptr) wakeUp_->clear();
}

xcb_timestamp_t EventPump::serverTime() {
    lastTime_ = XCB_CURRENT_TIME;
    xcb_change_property(connection_.get(), XCB_PROP_MODE_APPEND, window_, timeProperty_, XCB_ATOM_STRING, 8,
                        0, nullptr);
    until([this] { return lastTime_ != XCB_CURRENT_TIME; }, in(milliseconds(500)));
    return lastTime_;
}

} // namespace brimwick
