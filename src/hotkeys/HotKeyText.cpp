#include "hotkeys/HotKeyText.h"

#include "hotkeys/KeyEvent.h"
#include "hotkeys/Utf16.h"

#include <array>
#include <string_view>
#include <utility>

namespace brimwick {

namespace {

using ModifierSymbol = std::pair<std::uint64_t, std::string_view>;

constexpr std::array<ModifierSymbol, 4> modifierSymbols{{{ModifierFlag::control, "^"},
                                                         {ModifierFlag::command, "⌘"},
                                                         {ModifierFlag::option, "⌥"},
                                                         {ModifierFlag::shift, "⇧"}}};

} // namespace

std::u16string charactersOfKey(KeyboardLayout& layout, std::uint16_t keyCode, std::uint64_t modifierFlags) {
    if (!layout.isAvailable()) return {};
    KeyTranslation translation = layout.translate(keyCode, modifierFlags, 0);
    if (translation.text.empty()) {
        if (translation.deadKeyState == 0) return {};
        translation = layout.translate(KeyCode::space, 0, translation.deadKeyState);
    }
    return translation.status == 0 ? translation.text : std::u16string();
}

std::string stringWithKeyCode(KeyboardLayout& layout, std::uint16_t keyCode) {
    return utf8FromUtf16(upperCased(charactersOfKey(layout, keyCode, 0)));
}

std::string hotKeyText(KeyboardLayout& layout, std::uint16_t keyCode, std::uint64_t modifierFlags) {
    std::string text;
    for (const auto& [flag, symbol] : modifierSymbols)
        if ((modifierFlags & flag) != 0) text += symbol;
    return text + stringWithKeyCode(layout, keyCode);
}

} // namespace brimwick
