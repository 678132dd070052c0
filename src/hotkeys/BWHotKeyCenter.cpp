#include "hotkeys/BWHotKeyCenter.h"

#include <algorithm>
#include <stdexcept>

namespace brimwick {

namespace {

BWHotKeyCenter::Predicate isOf(std::uint16_t keyCode, std::uint64_t modifierFlags) {
    return [keyCode, modifierFlags](const BWHotKey& hotKey) {
        return hotKey.keyCode() == keyCode && hotKey.modifierFlags() == modifierFlags;
    };
}

} // namespace

BWHotKeyCenter::HotKeys BWHotKeyCenter::hotKeysMatchingPredicate(const Predicate& predicate) const {
    HotKeys matches;
    std::ranges::copy_if(registry_.hotKeys_, std::back_inserter(matches),
                         [&](const auto& hotKey) { return predicate(*hotKey); });
    return matches;
}

bool BWHotKeyCenter::hasRegisteredHotKeyWithKeyCodeModifierFlags(std::uint16_t keyCode,
                                                                 std::uint64_t modifierFlags) const {
    return !hotKeysMatchingPredicate(isOf(keyCode, modifierFlags)).empty();
}

bool BWHotKeyCenter::registerHotKeyWithKeyCodeModifierFlagsTask(std::uint16_t keyCode,
                                                                std::uint64_t modifierFlags,
                                                                HotKeyTask task) {
    return registerHotKey(keyCode, modifierFlags,
                          {.target = {}, .action = {}, .object = {}, .task = std::move(task)});
}

bool BWHotKeyCenter::registerHotKeyWithKeyCodeModifierFlagsTargetActionObject(
    std::uint16_t keyCode, std::uint64_t modifierFlags, std::shared_ptr<HotKeyTarget> target,
    std::string action, std::string object) {
    return registerHotKey(
        keyCode, modifierFlags,
        {.target = std::move(target), .action = std::move(action), .object = std::move(object), .task = {}});
}

bool BWHotKeyCenter::registerHotKey(std::uint16_t keyCode, std::uint64_t modifierFlags,
                                    HotKeyInvocation invocation) {
    refusal_.clear();
    if (hasRegisteredHotKeyWithKeyCodeModifierFlags(keyCode, modifierFlags)) {
        refusal_ = refusalOfSecondGrab;
        return false;
    }
    auto hotKey = std::make_shared<RegisteredHotKey>(keyCode, modifierFlags, std::move(invocation));
    if (auto refusal = hotKey->registerHotKey(registry_.service_, registry_.identifierCounter_)) {
        refusal_ = std::move(*refusal);
        return false;
    }
    registry_.hotKeys_.push_back(std::move(hotKey));
    return true;
}

void BWHotKeyCenter::unregisterHotKeysMatchingPredicate(const Predicate& predicate) {
    const auto [first, last] = std::ranges::stable_partition(
        registry_.hotKeys_, [&](const auto& hotKey) { return !predicate(*hotKey); });
    const std::vector<std::shared_ptr<RegisteredHotKey>> matches(first, last);
    registry_.hotKeys_.erase(first, last);
    for (const auto& hotKey : matches) hotKey->unregisterHotKey();
}

void BWHotKeyCenter::unregisterHotKey(const BWHotKey& hotKey) {
    if (dynamic_cast<const RegisteredHotKey*>(&hotKey) == nullptr)
        throw std::invalid_argument("Invalid hotkey");
    unregisterHotKeysMatchingPredicate([&](const BWHotKey& candidate) { return &candidate == &hotKey; });
}

void BWHotKeyCenter::unregisterHotKeysWithTarget(const HotKeyTarget* target) {
    unregisterHotKeysMatchingPredicate(
        [target](const BWHotKey& hotKey) { return hotKey.target().get() == target; });
}

void BWHotKeyCenter::unregisterHotKeysWithTargetAction(const HotKeyTarget* target,
                                                       const std::string& action) {
    unregisterHotKeysMatchingPredicate([target, &action](const BWHotKey& hotKey) {
        return hotKey.target().get() == target && hotKey.action() == action;
    });
}

void BWHotKeyCenter::unregisterHotKeyWithKeyCodeModifierFlags(std::uint16_t keyCode,
                                                              std::uint64_t modifierFlags) {
    unregisterHotKeysMatchingPredicate(isOf(keyCode, modifierFlags));
}

BWHotKeyCenter::HotKeys BWHotKeyCenter::registeredHotKeys() const {
    return hotKeysMatchingPredicate(
        [](const BWHotKey& hotKey) { return static_cast<const RegisteredHotKey&>(hotKey).isRegistered(); });
}

} // namespace brimwick
