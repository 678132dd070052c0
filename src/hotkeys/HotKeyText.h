#pragma once

#include "platform/ports/KeyboardLayout.h"

#include <cstdint>
#include <string>

namespace brimwick {

/// What the key types with these flags, in UTF-16, a dead key its accent by itself; empty when it types
/// nothing.
std::u16string charactersOfKey(KeyboardLayout& layout, std::uint16_t keyCode, std::uint64_t modifierFlags);

/// The character of a key as the fields of the hot keys show it: a capital letter, the accent of a dead key,
/// or nothing.
std::string stringWithKeyCode(KeyboardLayout& layout, std::uint16_t keyCode);

/// The symbols of the modifiers, Control, Command, Option, Shift, and the character of the key.
std::string hotKeyText(KeyboardLayout& layout, std::uint16_t keyCode, std::uint64_t modifierFlags);

} // namespace brimwick
