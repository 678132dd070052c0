#pragma once

#include "hotkeys/KeyRules.h"

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
    bool handleKeyUp(const KeyEvent& event);
    /// Whether `handleKeyDown` would swallow the press. Does nothing else.
    bool wouldHandleKeyDown(const KeyEvent& event) const;

  private:
    bool pickerIsKeyWindow() const;
    bool canUndo() const;
    bool handleInPicker(const KeyEvent& event);
    bool handleInPreferences(const KeyEvent& event);

    PickerController& picker_;
    PreferencesController& preferences_;
};

} // namespace brimwick
