#pragma once

#include "platform/linux/x11/XcbConnection.h"

#include <bitset>
#include <cstdint>
#include <vector>

namespace brimwick {

/// Keys of the keyboard by X key code.
using KeySet = std::bitset<256>;

/// Which modifier bits of the X server stand for the modifiers and the locks of the program. A value, true
/// until the modifier mapping changes.
class KeyboardModifiers {
  public:
    /// What the server maps now. The usual bits where it cannot be asked.
    static KeyboardModifiers read(const XcbConnection& connection);
    /// The keys that are modifiers or locks.
    static KeySet modifierKeys(const XcbConnection& connection);

    /// The X modifiers of these `HotKeyModifier` bits.
    std::uint16_t mask(std::uint32_t hotKeyModifiers) const;
    /// The event-flag bits of the modifiers in an X event's state.
    std::uint64_t eventFlags(std::uint16_t state) const;
    /// An X event's state without locks, pointer buttons and keyboard group.
    std::uint16_t withoutLocks(std::uint16_t state) const;
    /// Every combination of locks, none of them included.
    std::vector<std::uint16_t> lockCombinations() const;

    bool operator==(const KeyboardModifiers&) const = default;

  private:
    std::uint16_t option_ = XCB_MOD_MASK_1;
    std::uint16_t command_ = XCB_MOD_MASK_4;
    std::uint16_t locks_ = XCB_MOD_MASK_LOCK;
};

} // namespace brimwick
