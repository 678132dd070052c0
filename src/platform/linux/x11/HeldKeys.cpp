#include "platform/linux/x11/HeldKeys.h"

#include <chrono>

namespace brimwick {

namespace {

/// In case the server swallowed a release, as it does when a keyboard is pulled out.
constexpr std::chrono::milliseconds recheckInterval{200};
constexpr std::size_t keysPerByte = 8;

} // namespace

HeldKeys::HeldKeys(XcbConnection& connection)
    : connection_(connection), events_(
                                   connection, [this](const xcb_generic_event_t&) { giveBackOnceUp(); },
                                   [this] {
                                       // The server ends the grabs of a client that is gone.
                                       awaited_.reset();
                                       recheck_.stop();
                                   }) {
    recheck_.setInterval(recheckInterval);
    QObject::connect(&recheck_, &QTimer::timeout, &recheck_, [this] { giveBackOnceUp(); });
}

void HeldKeys::withhold() {
    KeySet held = heldNow();
    if (held.none()) return;
    held &= ~KeyboardModifiers::modifierKeys(connection_);
    if (held.none()) return;
    const auto cookie = xcb_grab_keyboard(connection_.get(), 0, connection_.root(), XCB_CURRENT_TIME,
                                          XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    const XcbOwned<xcb_grab_keyboard_reply_t> reply(
        xcb_grab_keyboard_reply(connection_.get(), cookie, nullptr));
    if (!reply || reply->status != XCB_GRAB_STATUS_SUCCESS) return;
    awaited_ = held;
    recheck_.start();
    // They may have gone up before the grab, unseen.
    giveBackOnceUp();
}

KeySet HeldKeys::heldNow() const {
    const XcbOwned<xcb_query_keymap_reply_t> reply(
        xcb_query_keymap_reply(connection_.get(), xcb_query_keymap(connection_.get()), nullptr));
    KeySet held;
    if (!reply) return held;
    for (std::size_t key = 0; key < held.size(); ++key)
        held[key] = (reply->keys[key / keysPerByte] >> (key % keysPerByte) & 1) != 0;
    return held;
}

void HeldKeys::giveBackOnceUp() {
    if (awaited_.none()) return;
    awaited_ &= heldNow();
    if (awaited_.any()) return;
    recheck_.stop();
    xcb_ungrab_keyboard(connection_.get(), XCB_CURRENT_TIME);
    xcb_flush(connection_.get());
}

} // namespace brimwick
