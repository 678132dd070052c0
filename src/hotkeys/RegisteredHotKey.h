#pragma once

#include "hotkeys/BWHotKey.h"
#include "platform/ports/HotKeyService.h"

#include <optional>

namespace brimwick {

/// What a hot key invokes.
struct HotKeyInvocation {
    std::shared_ptr<HotKeyTarget> target;
    std::string action;
    std::string object;
    HotKeyTask task;
};

/// The one concrete hot key, which owns the combination while it is registered with the desktop. Outside the
/// registry it is only seen as a `BWHotKey`.
class RegisteredHotKey : public BWHotKey {
  public:
    RegisteredHotKey(std::uint16_t keyCode, std::uint64_t modifierFlags, HotKeyInvocation invocation)
        : invocation_(std::move(invocation)), keyCode_(keyCode), modifierFlags_(modifierFlags) {}

    std::shared_ptr<HotKeyTarget> target() const override { return invocation_.target; }
    std::string action() const override { return invocation_.action; }
    std::string object() const override { return invocation_.object; }
    HotKeyTask task() const override { return invocation_.task; }
    std::uint16_t keyCode() const override { return keyCode_; }
    std::uint64_t modifierFlags() const override { return modifierFlags_; }
    std::uint32_t hotKeyID() const { return hotKeyID_; }
    bool isRegistered() const { return hotKeyRef_ != nullptr; }

    /// Takes the combination under the counter's identifier, and counts on. When the desktop refuses, nothing
    /// changes, and the result is the reason as a sentence for the user.
    std::optional<std::string> registerHotKey(HotKeyService& service, std::uint32_t& identifierCounter);
    void unregisterHotKey() { hotKeyRef_.reset(); }
    /// Sends the action to the target; where that is not possible, calls the task, if there is one.
    void invokeWithEvent(const KeyEvent& event) const;

  private:
    HotKeyInvocation invocation_;
    std::uint16_t keyCode_;
    std::uint64_t modifierFlags_;
    std::uint32_t hotKeyID_ = 0;
    std::unique_ptr<HotKeyGrab> hotKeyRef_;
};

/// The modifiers of a registration for the flags of a hot key; every other flag is left out.
std::uint32_t hotKeyModifiers(std::uint64_t modifierFlags);

} // namespace brimwick
