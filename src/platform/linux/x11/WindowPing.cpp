#include "platform/linux/x11/WindowPing.h"

#include "platform/linux/x11/XcbEvents.h"

namespace brimwick {

void WindowPing::send(xcb_window_t window, xcb_timestamp_t time) {
    window_ = window;
    time_ = time;
    answered_.reset();
    listen(true);
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = connection_.atom("WM_PROTOCOLS");
    message.data.data32[0] = connection_.atom("_NET_WM_PING");
    message.data.data32[1] = time;
    message.data.data32[2] = window;
    xcb_send_event(connection_.get(), 0, window, XCB_EVENT_MASK_NO_EVENT,
                   reinterpret_cast<const char*>(&message));
    xcb_flush(connection_.get());
}

void WindowPing::handle(const xcb_generic_event_t& event) {
    const auto* message = eventAs<xcb_client_message_event_t>(event, XCB_CLIENT_MESSAGE);
    if (message == nullptr || message->window != connection_.root() || window_ == XCB_NONE) return;
    const bool isAnswer = message->type == connection_.atom("WM_PROTOCOLS") &&
                          message->data.data32[0] == connection_.atom("_NET_WM_PING") &&
                          message->data.data32[1] == time_ && message->data.data32[2] == window_;
    if (!isAnswer) return;
    answered_ = std::chrono::steady_clock::now();
    window_ = XCB_NONE;
    listen(false);
}

/// Answers go to the root window, for whoever manages its children; Qt 5 sends them to who watches the root
/// itself.
void WindowPing::listen(bool on) {
    constexpr std::uint32_t answers = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    const std::uint32_t events = on ? answers : std::uint32_t{XCB_EVENT_MASK_NO_EVENT};
    xcb_change_window_attributes(connection_.get(), connection_.root(), XCB_CW_EVENT_MASK, &events);
}

} // namespace brimwick
