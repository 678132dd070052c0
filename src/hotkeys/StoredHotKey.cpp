#include "hotkeys/StoredHotKey.h"

#include "hotkeys/RegisteredHotKey.h"

namespace brimwick {

namespace {

constexpr std::int64_t highestKeyCode = 127;

struct PreferenceKeys {
    const char* code;
    const char* flags;
};

PreferenceKeys preferenceKeys(Mode mode) {
    switch (mode) {
    case BWModeMove:
        return {"HotKeyCode", "HotKeyModifierFlags"};
    case BWModeCopy:
        return {"CopyModeHotKeyCode", "CopyModeHotKeyModifierFlags"};
    default:
        return {"OpenModeHotKeyCode", "OpenModeHotKeyModifierFlags"};
    }
}

StoredHotKey hotKey(std::int64_t code, std::int64_t storedFlags) {
    const auto flags = static_cast<std::uint64_t>(storedFlags);
    const bool isUsable = code >= 0 && code <= highestKeyCode && hotKeyModifiers(flags) != 0;
    return {static_cast<std::uint16_t>(code), flags, isUsable};
}

} // namespace

StoredHotKey storedHotKey(const PreferencesStore& preferences, Mode mode) {
    switch (mode) {
    case BWModeMove:
        return hotKey(preferences.hotKeyCode(), preferences.hotKeyModifierFlags());
    case BWModeCopy:
        return hotKey(preferences.bwCopyModeHotKeyCode(), preferences.bwCopyModeHotKeyModifierFlags());
    default:
        return hotKey(preferences.openModeHotKeyCode(), preferences.openModeHotKeyModifierFlags());
    }
}

void saveHotKey(PreferencesStore& preferences, Mode mode, std::uint16_t keyCode,
                std::uint64_t modifierFlags) {
    const PreferenceKeys keys = preferenceKeys(mode);
    preferences.preferences().set(keys.code, {std::to_string(keyCode)});
    preferences.preferences().set(keys.flags, {std::to_string(static_cast<std::int64_t>(modifierFlags))});
    preferences.savePreferences();
    preferences.loadPreferences();
}

} // namespace brimwick
