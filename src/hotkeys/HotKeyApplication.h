#pragma once

#include "hotkeys/BWHotKeyCenter.h"
#include "model/Mode.h"
#include "model/PreferencesStore.h"

#include <array>
#include <functional>

namespace brimwick {

/// Turns the three stored hot keys into registered ones, and a released one into its mode. Main thread only.
class HotKeyApplication {
  public:
    /// Both outlive the application.
    HotKeyApplication(HotKeyRegistry& registry, const PreferencesStore& preferences);

    /// What a released hot key does.
    void setInvocation(std::function<void(Mode)> invocation);

    /// True when the combination is registered. A mode other than Move and Copy counts as Open.
    bool applyHotKeyPreferenceWithKeyCodeModifierFlagsUnregisterOldOneForMode(std::uint16_t keyCode,
                                                                              std::uint64_t modifierFlags,
                                                                              bool unregisterOldOne,
                                                                              Mode mode);
    /// The stored combinations of Move, Copy and Open, in this order. Refusals are silent; so is a
    /// combination that is no key, or one without a modifier.
    void applyAllHotKeys(bool unregisterOldHotKeys);
    /// Why the mode has no hot key, as a sentence for the user; empty when it has one.
    std::string refusal(Mode mode) const;

  private:
    class ModeTarget;

    static std::size_t place(Mode mode);
    /// For a mode whose stored combination cannot be one.
    void giveUp(Mode mode, bool unregisterOldOne);

    HotKeyRegistry& registry_;
    const PreferencesStore& preferences_;
    std::shared_ptr<ModeTarget> target_;
    /// Of the latest registration of each mode.
    std::array<std::string, 3> refusals_;
};

} // namespace brimwick
