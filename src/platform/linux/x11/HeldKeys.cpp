#include "platform/linux/x11/HeldKeys.h"

#include <poll.h>

#include <chrono>

namespace brimwick {

namespace {

/// In case the server swallowed a release, as it does when a keyboard is pulled out, and to notice the end of
/// the program.
constexpr std::chrono::milliseconds recheckInterval{50};
constexpr std::size_t keysPerByte = 8;

void waitForEvents(const XcbConnection& connection) {
    pollfd readable{xcb_get_file_descriptor(connection.get()), POLLIN, 0};
    poll(&readable, 1, static_cast<int>(recheckInterval.count()));
    while (const XcbOwned<xcb_generic_event_t> ignored{xcb_poll_for_event(connection.get())}) {
    }
}

} // namespace

HeldKeys::HeldKeys(std::unique_ptr<XcbConnection> connection) : connection_(std::move(connection)) {}

void HeldKeys::withhold() {
    if (withholding_) return;
    KeySet held = heldNow();
    if (held.none()) return;
    held &= ~KeyboardModifiers::modifierKeys(*connection_);
    if (held.none()) return;
    const auto cookie = xcb_grab_keyboard(connection_->get(), 0, connection_->root(), XCB_CURRENT_TIME,
                                          XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    const XcbOwned<xcb_grab_keyboard_reply_t> reply(
        xcb_grab_keyboard_reply(connection_->get(), cookie, nullptr));
    if (!reply || reply->status != XCB_GRAB_STATUS_SUCCESS) return;
    withholding_ = true;
    waiter_ = std::jthread([this, held](const std::stop_token& stop) { giveBackOnceUp(held, stop); });
}

KeySet HeldKeys::heldNow() const {
    const XcbOwned<xcb_query_keymap_reply_t> reply(
        xcb_query_keymap_reply(connection_->get(), xcb_query_keymap(connection_->get()), nullptr));
    KeySet held;
    if (!reply) return held;
    for (std::size_t key = 0; key < held.size(); ++key)
        held[key] = (reply->keys[key / keysPerByte] >> (key % keysPerByte) & 1) != 0;
    return held;
}

void HeldKeys::giveBackOnceUp(KeySet awaited, const std::stop_token& stop) {
    // They may have gone up before the grab, unseen.
    while ((awaited &= heldNow()).any() && !stop.stop_requested() && !connection_->isBroken())
        waitForEvents(*connection_);
    xcb_ungrab_keyboard(connection_->get(), XCB_CURRENT_TIME);
    connection_->synchronise();
    withholding_ = false;
}

} // namespace brimwick
