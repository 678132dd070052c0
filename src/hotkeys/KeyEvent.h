#pragma once

#include "platform/ports/ModifierFlags.h"

#include <cstdint>
#include <string>

namespace brimwick {

/// Virtual key codes by which the key rules speak of keys.
namespace KeyCode {
inline constexpr std::uint16_t a = 0;
inline constexpr std::uint16_t z = 6;
inline constexpr std::uint16_t x = 7;
inline constexpr std::uint16_t c = 8;
inline constexpr std::uint16_t v = 9;
inline constexpr std::uint16_t w = 13;
inline constexpr std::uint16_t equals = 24;
inline constexpr std::uint16_t minus = 27;
inline constexpr std::uint16_t returnKey = 36;
inline constexpr std::uint16_t comma = 43;
inline constexpr std::uint16_t tab = 48;
inline constexpr std::uint16_t space = 49;
inline constexpr std::uint16_t escape = 53;
inline constexpr std::uint16_t keypadEnter = 76;
inline constexpr std::uint16_t pageUp = 116;
inline constexpr std::uint16_t pageDown = 121;
inline constexpr std::uint16_t downArrow = 125;
inline constexpr std::uint16_t upArrow = 126;
/// A key without a virtual key code.
inline constexpr std::uint16_t unknown = 0xFFFF;
} // namespace KeyCode

/// The numbers are those of the window system that the key rules were written for.
enum class KeyEventType : std::uint8_t { keyDown = 10, keyUp = 11 };

/// A key press or release as the key rules see it.
struct KeyEvent {
    KeyEventType type = KeyEventType::keyDown;
    std::uint16_t keyCode = KeyCode::unknown;
    /// As `ModifierFlag`: the Super key is Command.
    std::uint64_t modifierFlags = 0;
    /// What the key types with no modifier but Shift, in UTF-16.
    std::u16string charactersIgnoringModifiers;
    /// Whether the key was down already.
    bool isARepeat = false;
    /// Milliseconds on the desktop's clock.
    std::uint32_t timestamp = 0;
    /// Where the pointer was, in pixels from the screen's upper left corner.
    double x = 0;
    double y = 0;
    /// -1: of no window.
    std::int32_t windowNumber = -1;

    /// The letter of a window shortcut that Ctrl was pressed with, by what the layout prints; else unknown.
    std::uint16_t windowShortcut = KeyCode::unknown;

    bool has(std::uint64_t flag) const { return (modifierFlags & flag) != 0; }
};

} // namespace brimwick
