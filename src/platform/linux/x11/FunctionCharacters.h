#pragma once

#include <xkbcommon/xkbcommon-keysyms.h>

#include <array>
#include <cstdint>
#include <optional>
#include <utility>

namespace brimwick {

/// The character by which the program knows a key that types none, or one of another meaning elsewhere.
constexpr std::optional<char16_t> functionCharacter(std::uint32_t symbol) {
    constexpr std::array characters = std::to_array<std::pair<std::uint32_t, char16_t>>({
        {XKB_KEY_Up, 0xF700},           {XKB_KEY_Down, 0xF701},      {XKB_KEY_Left, 0xF702},
        {XKB_KEY_Right, 0xF703},        {XKB_KEY_Insert, 0xF727},    {XKB_KEY_Home, 0xF729},
        {XKB_KEY_Begin, 0xF72A},        {XKB_KEY_End, 0xF72B},       {XKB_KEY_Page_Up, 0xF72C},
        {XKB_KEY_Page_Down, 0xF72D},    {XKB_KEY_Print, 0xF72E},     {XKB_KEY_Scroll_Lock, 0xF72F},
        {XKB_KEY_Pause, 0xF730},        {XKB_KEY_Sys_Req, 0xF731},   {XKB_KEY_Break, 0xF732},
        {XKB_KEY_Menu, 0xF735},         {XKB_KEY_Num_Lock, 0xF739},  {XKB_KEY_Select, 0xF741},
        {XKB_KEY_Execute, 0xF742},      {XKB_KEY_Undo, 0xF743},      {XKB_KEY_Redo, 0xF744},
        {XKB_KEY_Find, 0xF745},         {XKB_KEY_Help, 0xF746},      {XKB_KEY_KP_Enter, 0x03},
        {XKB_KEY_BackSpace, 0x08},      {XKB_KEY_Tab, 0x09},         {XKB_KEY_Return, 0x0D},
        {XKB_KEY_KP_Up, 0xF700},        {XKB_KEY_KP_Down, 0xF701},   {XKB_KEY_KP_Left, 0xF702},
        {XKB_KEY_KP_Right, 0xF703},     {XKB_KEY_KP_Insert, 0xF727}, {XKB_KEY_KP_Home, 0xF729},
        {XKB_KEY_KP_Begin, 0xF72A},     {XKB_KEY_KP_End, 0xF72B},    {XKB_KEY_KP_Page_Up, 0xF72C},
        {XKB_KEY_KP_Page_Down, 0xF72D}, {XKB_KEY_KP_Delete, 0x7F},   {XKB_KEY_ISO_Left_Tab, 0x19},
        {XKB_KEY_Escape, 0x1B},         {XKB_KEY_Delete, 0x7F},
    });
    constexpr char16_t characterOfF1 = 0xF704;
    if (symbol >= XKB_KEY_F1 && symbol <= XKB_KEY_F35)
        return static_cast<char16_t>(characterOfF1 + (symbol - XKB_KEY_F1));
    for (const auto& [key, character] : characters)
        if (key == symbol) return character;
    return std::nullopt;
}

} // namespace brimwick
