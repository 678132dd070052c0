#include "hotkeys/HotKeyApplication.h"

namespace brimwick {

HotKeyApplication::Combination HotKeyApplication::storedCombination(Mode mode) const {
    const auto combination = [](std::int64_t code, std::int64_t flags) {
        return Combination{static_cast<std::uint16_t>(code), static_cast<std::uint64_t>(flags)};
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
        applyHotKeyPreferenceWithKeyCodeModifierFlagsUnregisterOldOneForMode(
            stored.keyCode, stored.modifierFlags, unregisterOldHotKeys, mode);
    }
}

} // namespace brimwick
