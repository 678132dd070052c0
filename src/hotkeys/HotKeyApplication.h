#pragma once

#include "hotkeys/BWHotKeyCenter.h"
#include "model/Mode.h"
#include "model/PreferencesStore.h"

#include <functional>

namespace brimwick {

/// Turns the three stored hot keys into registered ones, and a released one into its mode. Main thread only.
class HotKeyApplication {
  public:
    HotKeyApplication(BWHotKeyCenter& hotKeyCenter, const PreferencesStore& preferences)
        : hotKeyCenter_(hotKeyCenter), preferences_(preferences) {}

    /// What a released hot key does.
    void setInvocation(std::function<void(Mode)> invocation) { invocation_ = std::move(invocation); }

    /// True when the combination is registered. A mode other than Move and Copy counts as Open.
    bool applyHotKeyPreferenceWithKeyCodeModifierFlagsUnregisterOldOneForMode(std::uint16_t keyCode,
                                                                              std::uint64_t modifierFlags,
                                                                              bool unregisterOldOne,
                                                                              Mode mode);
    /// The stored combinations of Move, Copy and Open, in this order. Refusals are silent; so is a
    /// combination that is no key, or one without a modifier.
    void applyAllHotKeys(bool unregisterOldHotKeys);

  private:
    struct Combination {
        std::uint16_t keyCode;
        std::uint64_t modifierFlags;
        bool isUsable;
    };
    Combination storedCombination(Mode mode) const;

    BWHotKeyCenter& hotKeyCenter_;
    const PreferencesStore& preferences_;
    std::function<void(Mode)> invocation_;
};

} // namespace brimwick
