#pragma once

#include "hotkeys/HotKeyRegistry.h"

namespace brimwick {

/// Registers system-wide hot keys and takes them back. Every centre of one registry sees the same hot keys.
/// Main thread only.
class BWHotKeyCenter {
  public:
    using Predicate = std::function<bool(const BWHotKey&)>;
    using HotKeys = std::vector<std::shared_ptr<const BWHotKey>>;

    /// The registry must outlive the centre.
    explicit BWHotKeyCenter(HotKeyRegistry& registry) : registry_(registry) {}

    HotKeys hotKeysMatchingPredicate(const Predicate& predicate) const;
    bool hasRegisteredHotKeyWithKeyCodeModifierFlags(std::uint16_t keyCode,
                                                     std::uint64_t modifierFlags) const;
    /// False when the combination is registered already or the desktop refuses it; nothing changes then, and
    /// refusal() has the reason.
    bool registerHotKeyWithKeyCodeModifierFlagsTask(std::uint16_t keyCode, std::uint64_t modifierFlags,
                                                    HotKeyTask task);
    /// The same for an action that is sent to a target with an object.
    bool registerHotKeyWithKeyCodeModifierFlagsTargetActionObject(std::uint16_t keyCode,
                                                                  std::uint64_t modifierFlags,
                                                                  std::shared_ptr<HotKeyTarget> target,
                                                                  std::string action, std::string object);
    /// As a sentence for the user; empty when this centre's last registration succeeded.
    const std::string& refusal() const { return refusal_; }

    void unregisterHotKeysMatchingPredicate(const Predicate& predicate);
    /// Throws std::invalid_argument, "Invalid hotkey", for an object that is not of the registry's own class.
    void unregisterHotKey(const BWHotKey& hotKey);
    void unregisterHotKeysWithTarget(const HotKeyTarget* target);
    void unregisterHotKeysWithTargetAction(const HotKeyTarget* target, const std::string& action);
    void unregisterHotKeyWithKeyCodeModifierFlags(std::uint16_t keyCode, std::uint64_t modifierFlags);

    HotKeys registeredHotKeys() const;

  private:
    bool registerHotKey(std::uint16_t keyCode, std::uint64_t modifierFlags, HotKeyInvocation invocation);

    HotKeyRegistry& registry_;
    std::string refusal_;
};

} // namespace brimwick
