#include "hotkeys/KeyRules.h"

namespace brimwick {

namespace {

constexpr std::uint16_t lastOfRecordedCodes = 23;
constexpr std::int32_t animationStyleControl = 12;
constexpr std::int32_t lastCheckBox = 11;

/// The same press with Command, where Ctrl and the letter of a window shortcut were pressed.
KeyEvent withWindowShortcut(const KeyEvent& event) {
    if (event.windowShortcut == KeyCode::unknown) return event;
    KeyEvent shortcut = event;
    shortcut.keyCode = event.windowShortcut;
    shortcut.modifierFlags = ModifierFlag::command;
    return shortcut;
}

PreferencesKey returnKey(const PreferencesPlace& place) {
    const std::int32_t closeButton = place.selectedTab == PreferencesTab::General
                                         ? PreferencesControl::generalCloseButton
                                         : PreferencesControl::notificationsCloseButton;
    return place.preferencesWindowFocusedControlIndex == closeButton ? PreferencesKey::Close
                                                                     : PreferencesKey::Nothing;
}

PreferencesKey spaceKey(const PreferencesPlace& place) {
    const std::int32_t index = place.preferencesWindowFocusedControlIndex;
    if (place.selectedTab == PreferencesTab::General) return returnKey(place);
    if (index == PreferencesControl::notificationsCloseButton) return PreferencesKey::Close;
    if (index == animationStyleControl) return PreferencesKey::ToggleAnimationStyle;
    return index > lastCheckBox ? PreferencesKey::Nothing : PreferencesKey::ToggleNotification;
}

} // namespace

PickerKey pickerKey(const KeyEvent& pressed, bool canUndo) {
    const KeyEvent event = withWindowShortcut(pressed);
    const bool command = event.has(ModifierFlag::command);
    const bool shift = event.has(ModifierFlag::shift);
    const auto when = [](bool condition, PickerKey key) { return condition ? key : PickerKey::Other; };
    switch (event.keyCode) {
    case KeyCode::pageDown:
        return PickerKey::PageDown;
    case KeyCode::pageUp:
        return PickerKey::PageUp;
    case KeyCode::downArrow:
        return shift ? PickerKey::PassOn : PickerKey::Down;
    case KeyCode::upArrow:
        return shift ? PickerKey::PassOn : PickerKey::Up;
    case KeyCode::escape:
        return PickerKey::Close;
    case KeyCode::comma:
        return when(command, PickerKey::ShowPreferences);
    case KeyCode::returnKey:
    case KeyCode::keypadEnter:
        return PickerKey::Confirm;
    case KeyCode::a:
        return when(command, PickerKey::SelectAll);
    case KeyCode::z:
        return when(command && canUndo, PickerKey::Undo);
    case KeyCode::x:
        return when(command, PickerKey::Cut);
    case KeyCode::c:
        return when(command, PickerKey::Copy);
    case KeyCode::v:
        return when(command, PickerKey::Paste);
    case KeyCode::w:
        return when(command, PickerKey::Close);
    default:
        return PickerKey::Other;
    }
}

bool pickerSwallowsKeyUp(const KeyEvent& event) {
    switch (event.keyCode) {
    case KeyCode::returnKey:
    case KeyCode::keypadEnter:
    case KeyCode::escape:
    case KeyCode::pageUp:
    case KeyCode::pageDown:
    case KeyCode::downArrow:
    case KeyCode::upArrow:
        return true;
    default:
        return false;
    }
}

bool hotKeyFieldIsFocused(const PreferencesPlace& place) {
    return place.selectedTab == PreferencesTab::General &&
           place.preferencesWindowFocusedControlIndex <= PreferencesControl::lastHotKeyField;
}

PreferencesKey preferencesKey(const KeyEvent& pressed, const PreferencesPlace& place) {
    // In a field the press itself is what counts: Ctrl may become part of a hot key.
    const bool isInField = hotKeyFieldIsFocused(place) && !place.listHasFocus;
    const KeyEvent event = isInField ? pressed : withWindowShortcut(pressed);
    if (event.keyCode == KeyCode::w && event.has(ModifierFlag::command)) return PreferencesKey::Close;
    if (event.keyCode <= lastOfRecordedCodes) return PreferencesKey::Record;
    switch (event.keyCode) {
    case KeyCode::equals:
        return PreferencesKey::SelectIndexedFolder;
    case KeyCode::minus:
        return PreferencesKey::RemoveIndexedFolder;
    case KeyCode::returnKey:
        return returnKey(place);
    case KeyCode::keypadEnter:
        // In a field it is a key like any other.
        return hotKeyFieldIsFocused(place) ? PreferencesKey::Record : returnKey(place);
    case KeyCode::tab:
        return event.has(ModifierFlag::shift) ? PreferencesKey::FocusPrevious : PreferencesKey::FocusNext;
    case KeyCode::space:
        return spaceKey(place);
    case KeyCode::escape:
        return PreferencesKey::Close;
    default:
        return PreferencesKey::Record;
    }
}

} // namespace brimwick
