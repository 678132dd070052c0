#pragma once

#include "hotkeys/KeyEvent.h"
#include "platform/ports/KeyboardLayout.h"

class QKeyEvent;

namespace brimwick {

/// Turns key events of the application into such as the key rules know. Main thread only.
class KeyEventReader {
  public:
    /// The layout outlives the reader.
    explicit KeyEventReader(KeyboardLayout& layout) : layout_(layout) {}

    /// The event by the place of its key. Where Ctrl alone is held, a letter of a window shortcut is named as
    /// such, by what the layout prints. To be told of every press and release, modifiers included: that is
    /// how it knows which of two equal modifier keys is held.
    KeyEvent read(const QKeyEvent& event);

    /// Whether the event is of a key that only modifies others.
    static bool isModifierKey(const QKeyEvent& event);

  private:
    std::uint64_t modifierFlags(const QKeyEvent& event) const;

    KeyboardLayout& layout_;
    /// The bits of the right one of each pair that is held.
    std::uint64_t rightModifiers_ = 0;
};

} // namespace brimwick
