#pragma once

#include "hotkeys/KeyEvent.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <string>

namespace brimwick {

/// Receives the actions of hot keys.
class HotKeyTarget {
  public:
    virtual ~HotKeyTarget() = default;
    /// Does what the action's name says; false when it knows no such action.
    virtual bool perform(const std::string& action, const KeyEvent& event, const std::string& object) = 0;
    virtual std::string description() const = 0;
};

/// What a hot key without a target calls.
using HotKeyTask = std::function<void(const KeyEvent&)>;

/// The public face of a hot key, to be read only; one by itself is of no key and does nothing. Two of the
/// same combination are the same hot key, whatever they invoke.
class BWHotKey {
  public:
    virtual ~BWHotKey() = default;

    /// Empty for a hot key with a task.
    virtual std::shared_ptr<HotKeyTarget> target() const { return {}; }
    /// The name of the action that is sent to the target; empty for none.
    virtual std::string action() const { return {}; }
    /// Handed to the target with the action.
    virtual std::string object() const { return {}; }
    virtual HotKeyTask task() const { return {}; }
    virtual std::uint16_t keyCode() const { return 0; }
    virtual std::uint64_t modifierFlags() const { return 0; }

    std::uint64_t hash() const { return keyCode() + modifierFlags(); }
    bool isEqual(const BWHotKey& other) const {
        return keyCode() == other.keyCode() && modifierFlags() == other.modifierFlags();
    }
    /// Two indented lines for a log: the combination, and what it invokes.
    std::string description() const;
};

} // namespace brimwick
