#include "hotkeys/RegisteredHotKey.h"

namespace brimwick {

std::uint32_t hotKeyModifiers(std::uint64_t modifierFlags) {
    std::uint32_t modifiers = 0;
    if ((modifierFlags & ModifierFlag::shift) != 0) modifiers |= HotKeyModifier::shift;
    if ((modifierFlags & ModifierFlag::control) != 0) modifiers |= HotKeyModifier::control;
    if ((modifierFlags & ModifierFlag::option) != 0) modifiers |= HotKeyModifier::option;
    if ((modifierFlags & ModifierFlag::command) != 0) modifiers |= HotKeyModifier::command;
    return modifiers;
}

std::optional<std::string> RegisteredHotKey::registerHotKey(HotKeyService& service,
                                                            std::uint32_t& identifierCounter) {
    HotKeyGrant grant = service.grab(keyCode_, hotKeyModifiers(modifierFlags_), identifierCounter);
    if (!grant.grab) return grant.refusal;
    hotKeyRef_ = std::move(grant.grab);
    hotKeyID_ = identifierCounter++;
    return std::nullopt;
}

void RegisteredHotKey::invokeWithEvent(const KeyEvent& event) const {
    if (invocation_.target && !invocation_.action.empty() &&
        invocation_.target->perform(invocation_.action, event, invocation_.object))
        return;
    if (invocation_.task) invocation_.task(event);
}

} // namespace brimwick
