#pragma once

#include "platform/linux/x11/KeyboardModifiers.h"

#include <atomic>
#include <functional>
#include <memory>
#include <stop_token>
#include <thread>
#include <vector>

namespace brimwick {

/// Keeps keys that are held down from typing into the window that gets the focus next, by having the whole
/// keyboard until they are up. A thread of its own waits for that, so that the keyboard, and with it the hot
/// keys, is free again at once, however busy the main thread is. Used from the main thread.
class HeldKeys {
  public:
    /// The connection serves the withholding alone.
    explicit HeldKeys(std::unique_ptr<XcbConnection> connection);

    /// Takes the keyboard when a key that is no modifier is down, and gives it back by itself. Does nothing
    /// when no such key is down, when keys are being withheld, and when another program has the keyboard.
    void withhold();

    /// Hears of a key that was pressed with Ctrl, Alt or Super while the keyboard was withheld, once it is
    /// up: as a hot key it has missed whoever waited for it. Called on the thread that waits; to be set
    /// before the first withholding.
    using ChordMissed = std::function<void(const xcb_key_press_event_t&)>;
    void setChordMissedHandler(ChordMissed handler) { chordMissed_ = std::move(handler); }

  private:
    using Chords = std::vector<xcb_key_press_event_t>;

    KeySet heldNow() const;
    bool takeEvents(Chords& chords) const;
    void waitForEvents(Chords& chords) const;
    void giveBackOnceUp(KeySet awaited, const std::stop_token& stop);

    std::unique_ptr<XcbConnection> connection_;
    ChordMissed chordMissed_;
    std::atomic<bool> withholding_ = false;
    /// Last: it uses all of the above.
    std::jthread waiter_;
};

} // namespace brimwick
