#include "hotkeys/HotKeyApplication.h"

namespace brimwick {

namespace {

constexpr std::int64_t highestKeyCode = 127;

} // namespace

HotKeyApplication::Combination HotKeyApplication::storedCombination(Mode mode) const {
    const auto combination = [](std::int64_t code, std::int64_t flags) {
        const bool isUsable =
            code >= 0 && code <= highestKeyCode && hotKeyModifiers(static_cast<std::uint64_t>(flags)) != 0;
        return Combination{static_cast<std::uint16_t>(code), static_cast<std::uint64_t>(flags), isUsable};
    };
    switch (mode) {
    case BWModeMove:
        return combination(preferences_.hotKeyCode(), preferences_.hotKeyModifierFlags());
    case BWModeCopy:
        return combination(preferences_.bwCopyModeHotKeyCode(), preferences_.bwCopyModeHotKeyModifierFlags());
    default:
        return combination(preferences_.openModeHotKeyCode(), preferences_.openModeHotKeyModifierFlags());
    }
}

bool HotKeyApplication::applyHotKeyPreferenceWithKeyCodeModifierFlagsUnregisterOldOneForMode(
    std::uint16_t keyCode, std::uint64_t modifierFlags, bool unregisterOldOne, Mode mode) {
    if (unregisterOldOne) {
        const Combination old = storedCombination(mode);
        hotKeyCenter_.unregisterHotKeyWithKeyCodeModifierFlags(old.keyCode, old.modifierFlags);
    }
    return hotKeyCenter_.registerHotKeyWithKeyCodeModifierFlagsTask(keyCode, modifierFlags,
                                                                    [this, mode](const HotKeyRelease&) {
                                                                        if (invocation_) invocation_(mode);
                                                                    });
}

void HotKeyApplication::applyAllHotKeys(bool unregisterOldHotKeys) {
    for (const Mode mode : {BWModeMove, BWModeCopy, BWModeOpen}) {
        const Combination stored = storedCombination(mode);
        // Without any modifier it would take a key away from everybody who types.
        if (!stored.isUsable) continue;
        applyHotKeyPreferenceWithKeyCodeModifierFlagsUnregisterOldOneForMode(
            stored.keyCode, stored.modifierFlags, unregisterOldHotKeys, mode);
    }
}

} // namespace brimwick
