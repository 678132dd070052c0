#pragma once

#include <cstdint>

class QKeyEvent;

namespace brimwick {

/// Virtual key codes by which the key rules speak of keys.
namespace KeyCode {
inline constexpr std::uint16_t a = 0;
inline constexpr std::uint16_t z = 6;
inline constexpr std::uint16_t x = 7;
inline constexpr std::uint16_t c = 8;
inline constexpr std::uint16_t v = 9;
inline constexpr std::uint16_t w = 13;
inline constexpr std::uint16_t returnKey = 36;
inline constexpr std::uint16_t comma = 43;
inline constexpr std::uint16_t escape = 53;
inline constexpr std::uint16_t keypadEnter = 76;
inline constexpr std::uint16_t pageUp = 116;
inline constexpr std::uint16_t pageDown = 121;
inline constexpr std::uint16_t downArrow = 125;
inline constexpr std::uint16_t upArrow = 126;
/// A key without a virtual key code.
inline constexpr std::uint16_t unknown = 0xFFFF;
} // namespace KeyCode

/// A key press or release as the key rules see it.
struct KeyEvent {
    std::uint16_t keyCode = KeyCode::unknown;
    /// As `ModifierFlag`: the Super key is Command.
    std::uint64_t modifierFlags = 0;
};

/// The event by the place of its key. Where Ctrl alone is held, a letter of a window shortcut counts as the
/// same letter with Command, by what the layout prints.
KeyEvent keyEvent(const QKeyEvent& event);

} // namespace brimwick
