#pragma once

#include "hotkeys/KeyEvent.h"
#include "hotkeys/PreferencesPlace.h"

namespace brimwick {

/// What a key press means in the picker.
enum class PickerKey : std::uint8_t {
    /// It is passed on, after prompt and results have been brought up to date.
    Other,
    /// It is passed on and nothing else.
    PassOn,
    PageDown,
    PageUp,
    Down,
    Up,
    Close,
    ShowPreferences,
    Confirm,
    SelectAll,
    Undo,
    Cut,
    Copy,
    Paste,
};

/// What a key press means in the preferences window.
enum class PreferencesKey : std::uint8_t {
    /// It is recorded as a hot key, or passed on.
    Record,
    /// It is swallowed.
    Nothing,
    Close,
    SelectIndexedFolder,
    RemoveIndexedFolder,
    FocusNext,
    FocusPrevious,
    ToggleAnimationStyle,
    /// The check box that has the focus.
    ToggleNotification,
};

/// `canUndo`: whether the search field has something to undo.
PickerKey pickerKey(const KeyEvent& event, bool canUndo);
/// Whether the picker swallows the release of the key.
bool pickerSwallowsKeyUp(const KeyEvent& event);
PreferencesKey preferencesKey(const KeyEvent& event, const PreferencesPlace& place);

/// Whether the focus is on one of the three fields of the hot keys.
bool hotKeyFieldIsFocused(const PreferencesPlace& place);

} // namespace brimwick
