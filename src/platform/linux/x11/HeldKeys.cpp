#include "platform/linux/x11/HeldKeys.h"

#include "platform/linux/x11/XcbEvents.h"

#include <poll.h>

#include <algorithm>
#include <chrono>

namespace brimwick {

namespace {

/// In case the server swallowed a release, as it does when a keyboard is pulled out, and to notice the end of
/// the program.
constexpr std::chrono::milliseconds recheckInterval{50};
/// Between looks at a key that is no longer ours to hear of.
constexpr std::chrono::milliseconds chordInterval{5};
constexpr std::size_t keysPerByte = 8;

/// Keys that stand for a command, rather than for a letter that runs on into the next window.
constexpr std::uint16_t commandModifiers = XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1 | XCB_MOD_MASK_4;

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

bool HeldKeys::takeEvents(Chords& chords) const {
    bool any = false;
    while (const XcbOwned<xcb_generic_event_t> event{xcb_poll_for_event(connection_->get())}) {
        any = true;
        const auto* press = eventAs<xcb_key_press_event_t>(*event, XCB_KEY_PRESS);
        if (press == nullptr || (press->state & commandModifiers) == 0) continue;
        const bool repeats = std::ranges::any_of(
            chords, [press](const xcb_key_press_event_t& known) { return known.detail == press->detail; });
        if (!repeats) chords.push_back(*press);
    }
    return any;
}

void HeldKeys::waitForEvents(Chords& chords) const {
    // A reply that was waited for may have taken the event in, with nothing left to read.
    if (takeEvents(chords)) return;
    pollfd readable{xcb_get_file_descriptor(connection_->get()), POLLIN, 0};
    poll(&readable, 1, static_cast<int>(recheckInterval.count()));
    takeEvents(chords);
}

void HeldKeys::giveBackOnceUp(KeySet awaited, const std::stop_token& stop) {
    Chords chords;
    const auto goesOn = [&] { return !stop.stop_requested() && !connection_->isBroken(); };
    // They may have gone up before the grab, unseen.
    while ((awaited &= heldNow()).any() && goesOn()) waitForEvents(chords);
    xcb_ungrab_keyboard(connection_->get(), XCB_CURRENT_TIME);
    connection_->synchronise();
    takeEvents(chords);

    KeySet ofChords;
    for (const xcb_key_press_event_t& chord : chords) ofChords.set(chord.detail);
    while ((ofChords & heldNow()).any() && goesOn()) std::this_thread::sleep_for(chordInterval);
    withholding_ = false;
    if (!chordMissed_ || !goesOn()) return;
    for (const xcb_key_press_event_t& chord : chords) chordMissed_(chord);
}

} // namespace brimwick
