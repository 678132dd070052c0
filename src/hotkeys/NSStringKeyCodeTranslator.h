#pragma once

#include "platform/ports/KeyboardLayout.h"

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace brimwick {

/// A key that is shown by its name.
struct SpecialKey {
    char16_t character;
    std::string_view name;
};

/// By the character that the layout yields for the key; the first that matches counts.
inline constexpr std::array specialKeys = std::to_array<SpecialKey>({
    {0xF700, "Up"},      {0xF701, "Down"},    {0xF702, "Left"},      {0xF703, "Right"}, {0xF729, "Home"},
    {0xF72B, "End"},     {0xF72C, "Page Up"}, {0xF72D, "Page Down"}, {0x1E, "Up"},      {0x1F, "Down"},
    {0x1C, "Left"},      {0x1D, "Right"},     {0x01, "Home"},        {0x04, "End"},     {0x0B, "Page Up"},
    {0x0C, "Page Down"}, {0x03, "Return"},    {0x09, "Tab"},         {0x19, "Backtab"}, {0x0D, "Enter"},
    {0x08, "Backspace"}, {0x7F, "Delete"},    {0x1B, "Escape"},      {0x20, "Space"},
});

/// The text of a key as a key equivalent of the menu.
class NSStringKeyCodeTranslator {
  public:
    /// What the key types in the layout in use, case as it is, or its name in the user's language; nothing
    /// when it types nothing, which is logged.
    static std::optional<std::string>
    stringForKeyCodeWithModifierFlags(KeyboardLayout& layout, std::uint16_t keyCode,
                                      std::uint64_t modifierFlags,
                                      const std::function<void(const std::string&)>& log);
};

} // namespace brimwick
