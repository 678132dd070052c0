#include "app/KeyDispatcher.h"

#include "picker/BWWickTableView.h"
#include "picker/PickerController.h"
#include "picker/PickerGeometry.h"
#include "preferences/PreferencesController.h"

#include <QApplication>
#include <QLineEdit>

namespace brimwick {

bool KeyDispatcher::pickerIsKeyWindow() const {
    return !picker_.isInPhantomMode() && QApplication::activePopupWidget() == nullptr &&
           QApplication::activeWindow() == &picker_.wickWindow();
}

bool KeyDispatcher::canUndo() const {
    return picker_.controls().searchField->isUndoAvailable();
}

bool KeyDispatcher::handleKeyDown(const KeyEvent& event) {
    if (pickerIsKeyWindow()) return handleInPicker(event);
    return preferences_.takesKeys() && handleInPreferences(event);
}

bool KeyDispatcher::wouldHandleKeyDown(const KeyEvent& event) const {
    if (pickerIsKeyWindow()) {
        const PickerKey key = pickerKey(event, canUndo());
        return key != PickerKey::Other && key != PickerKey::PassOn;
    }
    if (!preferences_.takesKeys()) return false;
    return preferencesKey(event, preferences_.place()) != PreferencesKey::Record ||
           preferences_.hotKeyFields().wouldRecordKeyDown(event);
}

bool KeyDispatcher::handleKeyUp(const KeyEvent& event) {
    if (pickerIsKeyWindow()) return pickerSwallowsKeyUp(event);
    if (preferences_.takesKeys()) preferences_.enableDisablePreferencesWindowControls();
    return false;
}

bool KeyDispatcher::handleInPicker(const KeyEvent& event) {
    QLineEdit* const field = picker_.controls().searchField;
    const std::int64_t row = picker_.selectedSearchResultsRow();
    const std::int64_t page = rowsPerPage(picker_.controls().searchResultsTableView->height());
    switch (pickerKey(event, canUndo())) {
    case PickerKey::PageDown:
        picker_.selectSearchResultsRow(row + page);
        break;
    case PickerKey::PageUp:
        picker_.selectSearchResultsRow(row - page);
        break;
    case PickerKey::Down:
        picker_.selectSearchResultsRow(row + 1);
        break;
    case PickerKey::Up:
        picker_.selectSearchResultsRow(row - 1);
        break;
    case PickerKey::Close:
        picker_.wickWindowCloseButtonWasPressed();
        break;
    case PickerKey::ShowPreferences:
        picker_.wickWindow().setPhantomMode(true);
        preferences_.showPreferences();
        break;
    case PickerKey::Confirm:
        picker_.wickWindowMoveButtonWasPressed();
        break;
    case PickerKey::SelectAll:
        field->selectAll();
        break;
    case PickerKey::Undo:
        field->undo();
        break;
    case PickerKey::Cut:
        field->cut();
        break;
    case PickerKey::Copy:
        field->copy();
        break;
    case PickerKey::Paste:
        field->paste();
        break;
    case PickerKey::PassOn:
        return false;
    case PickerKey::Other:
        picker_.refresh();
        return false;
    }
    return true;
}

bool KeyDispatcher::handleInPreferences(const KeyEvent& event) {
    switch (preferencesKey(event, preferences_.place())) {
    case PreferencesKey::Record:
        return preferences_.hotKeyFields().recordKeyDown(event);
    case PreferencesKey::Close:
        preferences_.preferencesWindowCloseButtonWasPressed();
        break;
    case PreferencesKey::SelectIndexedFolder:
        if (!event.isARepeat) preferences_.indexedFolders().selectIndexedFolder();
        break;
    case PreferencesKey::RemoveIndexedFolder:
        if (!event.isARepeat) preferences_.indexedFolders().removeIndexedFolder();
        break;
    case PreferencesKey::FocusNext:
        preferences_.moveFocus(true);
        break;
    case PreferencesKey::FocusPrevious:
        preferences_.moveFocus(false);
        break;
    case PreferencesKey::ToggleAnimationStyle:
        if (!event.isARepeat) preferences_.notificationSettings().toggleAnimationStyle();
        break;
    case PreferencesKey::ToggleNotification:
        if (!event.isARepeat)
            preferences_.notificationSettings().toggleCheckBox(
                preferences_.place().preferencesWindowFocusedControlIndex);
        break;
    case PreferencesKey::Nothing:
        break;
    }
    return true;
}

} // namespace brimwick
