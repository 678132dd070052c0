#include "hotkeys/BWHotKeyCenter.h"

#include <algorithm>

namespace brimwick {

std::uint32_t hotKeyModifiers(std::uint64_t modifierFlags) {
    std::uint32_t modifiers = 0;
    if ((modifierFlags & ModifierFlag::shift) != 0) modifiers |= HotKeyModifier::shift;
    if ((modifierFlags & ModifierFlag::control) != 0) modifiers |= HotKeyModifier::control;
    if ((modifierFlags & ModifierFlag::option) != 0) modifiers |= HotKeyModifier::option;
    if ((modifierFlags & ModifierFlag::command) != 0) modifiers |= HotKeyModifier::command;
    return modifiers;
}

BWHotKeyCenter::BWHotKeyCenter(HotKeyService& service) : service_(service) {
    service_.setReleaseHandler([this](const HotKeyRelease& release) { hotKeyWasReleased(release); });
}

BWHotKeyCenter::~BWHotKeyCenter() {
    service_.setReleaseHandler(nullptr);
}

bool BWHotKeyCenter::hasRegisteredHotKeyWithKeyCodeModifierFlags(std::uint16_t keyCode,
                                                                 std::uint64_t modifierFlags) const {
    return std::ranges::any_of(hotKeys_, [&](const RegisteredHotKey& hotKey) {
        return hotKey.keyCode == keyCode && hotKey.modifierFlags == modifierFlags;
    });
}

bool BWHotKeyCenter::registerHotKeyWithKeyCodeModifierFlagsTask(std::uint16_t keyCode,
                                                                std::uint64_t modifierFlags, Task task) {
    if (hasRegisteredHotKeyWithKeyCodeModifierFlags(keyCode, modifierFlags)) return false;
    HotKeyGrant grant = service_.grab(keyCode, hotKeyModifiers(modifierFlags), nextIdentifier_);
    if (!grant.grab) return false;
    hotKeys_.push_back({keyCode, modifierFlags, std::move(task), nextIdentifier_, std::move(grant.grab)});
    ++nextIdentifier_;
    return true;
}

void BWHotKeyCenter::unregisterHotKeyWithKeyCodeModifierFlags(std::uint16_t keyCode,
                                                              std::uint64_t modifierFlags) {
    std::erase_if(hotKeys_, [&](const RegisteredHotKey& hotKey) {
        return hotKey.keyCode == keyCode && hotKey.modifierFlags == modifierFlags;
    });
}

void BWHotKeyCenter::hotKeyWasReleased(const HotKeyRelease& release) const {
    const auto hotKey = std::ranges::find(hotKeys_, release.identifier, &RegisteredHotKey::identifier);
    if (hotKey == hotKeys_.end()) return;
    // The task may register other hot keys.
    const Task task = hotKey->task;
    task(release);
}

} // namespace brimwick
