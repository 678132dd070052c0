#include "hotkeys/NSStringKeyCodeTranslator.h"

#include "hotkeys/Utf16.h"

#include <algorithm>

namespace brimwick {

std::optional<std::string> NSStringKeyCodeTranslator::stringForKeyCodeWithModifierFlags(
    KeyboardLayout& layout, std::uint16_t keyCode, std::uint64_t modifierFlags,
    const std::function<void(const std::string&)>& log) {
    if (!layout.isAvailable()) {
        log("Couldn't find a suitable keyboard layout from which to translate");
        return std::nullopt;
    }
    const KeyTranslation translation = layout.translate(keyCode, modifierFlags, 0);
    if (translation.status != 0) {
        log("There was an " + translation.errorName + " error translating from the '" +
            std::to_string(translation.status) +
            "' key code to a human readable string: " + translation.errorComment);
        return std::nullopt;
    }
    if (translation.text.empty()) {
        log("Couldn't find a translation for the '" + std::to_string(keyCode) + "' key code");
        return std::nullopt;
    }
    const auto special = std::ranges::find(specialKeys, translation.text.front(), &SpecialKey::character);
    if (special != specialKeys.end()) return std::string(special->name);
    return utf8FromUtf16(translation.text);
}

} // namespace brimwick
