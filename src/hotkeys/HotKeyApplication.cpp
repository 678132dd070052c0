#include "hotkeys/HotKeyApplication.h"

#include "hotkeys/StoredHotKey.h"

namespace brimwick {

namespace {

constexpr std::array<const char*, 3> handlers = {
    "hotkeyWithEvent:object:",
    "bwCopyModeHotkeyWithEvent:object:",
    "openModeHotkeyWithEvent:object:",
};

} // namespace

/// The handlers of the three modes.
class HotKeyApplication::ModeTarget : public HotKeyTarget {
  public:
    bool perform(const std::string& action, const KeyEvent& /*event*/,
                 const std::string& /*object*/) override {
        for (const Mode mode : {BWModeMove, BWModeCopy, BWModeOpen}) {
            if (action != handlers[place(mode)]) continue;
            if (invocation) invocation(mode);
            return true;
        }
        return false;
    }
    std::string description() const override { return "BWModel"; }

    std::function<void(Mode)> invocation;
};

HotKeyApplication::HotKeyApplication(HotKeyRegistry& registry, const PreferencesStore& preferences)
    : registry_(registry), preferences_(preferences), target_(std::make_shared<ModeTarget>()) {}

void HotKeyApplication::setInvocation(std::function<void(Mode)> invocation) {
    target_->invocation = std::move(invocation);
}

std::size_t HotKeyApplication::place(Mode mode) {
    return mode == BWModeMove || mode == BWModeCopy ? static_cast<std::size_t>(mode)
                                                    : static_cast<std::size_t>(BWModeOpen);
}

bool HotKeyApplication::applyHotKeyPreferenceWithKeyCodeModifierFlagsUnregisterOldOneForMode(
    std::uint16_t keyCode, std::uint64_t modifierFlags, bool unregisterOldOne, Mode mode) {
    BWHotKeyCenter center(registry_);
    if (unregisterOldOne) {
        const StoredHotKey old = storedHotKey(preferences_, mode);
        // What is no combination was never registered, and its remains may be another mode's.
        if (old.isUsable) center.unregisterHotKeyWithKeyCodeModifierFlags(old.keyCode, old.modifierFlags);
        // Where the preferences cannot be written, the mode has another one than the stored.
        center.unregisterHotKeysWithTargetAction(target_.get(), handlers[place(mode)]);
    }
    const bool registered = center.registerHotKeyWithKeyCodeModifierFlagsTargetActionObject(
        keyCode, modifierFlags, target_, handlers[place(mode)], "You pressed Brimwick's hotkey!");
    refusals_[place(mode)] = center.refusal();
    return registered;
}

void HotKeyApplication::applyAllHotKeys(bool unregisterOldHotKeys) {
    for (const Mode mode : {BWModeMove, BWModeCopy, BWModeOpen}) {
        const StoredHotKey stored = storedHotKey(preferences_, mode);
        if (stored.isUsable)
            applyHotKeyPreferenceWithKeyCodeModifierFlagsUnregisterOldOneForMode(
                stored.keyCode, stored.modifierFlags, unregisterOldHotKeys, mode);
        else
            giveUp(mode, unregisterOldHotKeys);
    }
}

void HotKeyApplication::giveUp(Mode mode, bool unregisterOldOne) {
    if (unregisterOldOne)
        BWHotKeyCenter(registry_).unregisterHotKeysWithTargetAction(target_.get(), handlers[place(mode)]);
    refusals_[place(mode)] = "The preferences hold no usable combination.";
}

std::string HotKeyApplication::refusal(Mode mode) const {
    const bool isActive = !BWHotKeyCenter(registry_)
                               .hotKeysMatchingPredicate([&](const BWHotKey& hotKey) {
                                   return hotKey.action() == handlers[place(mode)];
                               })
                               .empty();
    if (isActive) return {};
    const std::string& reason = refusals_[place(mode)];
    // Another mode that had the same combination stored has taken it back.
    return reason.empty() ? "Another mode has given its hot key up." : reason;
}

} // namespace brimwick
