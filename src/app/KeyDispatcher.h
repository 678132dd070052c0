#pragma once

#include "app/KeyEvent.h"

#include <functional>
#include <optional>

namespace brimwick {

class PickerController;
class PreferencesController;

/// Decides about every key press and release before a window sees it. Main thread only.
class KeyDispatcher {
  public:
    /// Both outlive the dispatcher.
    KeyDispatcher(PickerController& picker, PreferencesController& preferences)
        : picker_(picker), preferences_(preferences) {}

    /// Acts on a press; true when it is swallowed.
    bool handleKeyDown(const KeyEvent& event);
    /// True when a release is swallowed.
    bool handleKeyUp(const KeyEvent& event) const;
    /// Whether `handleKeyDown` would swallow the press. Does nothing else.
    bool wouldHandleKeyDown(const KeyEvent& event) const { return pickerCommand(event).has_value(); }

  private:
    using Command = std::function<void()>;
    /// What the key means in the picker; nothing when it is passed on, or the picker is not the key window.
    std::optional<Command> pickerCommand(const KeyEvent& event) const;
    bool pickerIsKeyWindow() const;

    PickerController& picker_;
    PreferencesController& preferences_;
};

} // namespace brimwick
