#include "app/KeyDispatcher.h"

#include "hotkeys/BWHotKeyCenter.h"
#include "picker/BWWickTableView.h"
#include "picker/PickerController.h"
#include "picker/PickerGeometry.h"
#include "preferences/PreferencesController.h"

#include <QApplication>
#include <QLineEdit>

namespace brimwick {

bool KeyDispatcher::pickerIsKeyWindow() const {
    return QApplication::activePopupWidget() == nullptr &&
           QApplication::activeWindow() == &picker_.wickWindow();
}

std::optional<KeyDispatcher::Command> KeyDispatcher::pickerCommand(const KeyEvent& event) const {
    if (!pickerIsKeyWindow()) return std::nullopt;
    const bool command = (event.modifierFlags & ModifierFlag::command) != 0;
    const bool shift = (event.modifierFlags & ModifierFlag::shift) != 0;
    QLineEdit* field = picker_.controls().searchField;
    const auto moveBy = [this](std::int64_t rows) {
        return [this, rows] { picker_.selectSearchResultsRow(picker_.selectedSearchResultsRow() + rows); };
    };
    const std::int64_t page = rowsPerPage(picker_.controls().searchResultsTableView->height());
    const auto inField = [field](auto edit) { return [field, edit] { (field->*edit)(); }; };

    switch (event.keyCode) {
    case KeyCode::pageDown:
        return moveBy(page);
    case KeyCode::pageUp:
        return moveBy(-page);
    case KeyCode::downArrow:
        if (!shift) return moveBy(1);
        break;
    case KeyCode::upArrow:
        if (!shift) return moveBy(-1);
        break;
    case KeyCode::escape:
        return [this] { picker_.wickWindowCloseButtonWasPressed(); };
    case KeyCode::comma:
        if (command)
            return [this] {
                picker_.wickWindow().setPhantomMode(true);
                preferences_.showPreferences();
            };
        break;
    case KeyCode::returnKey:
    case KeyCode::keypadEnter:
        return [this] { picker_.wickWindowMoveButtonWasPressed(); };
    case KeyCode::a:
        if (command) return inField(&QLineEdit::selectAll);
        break;
    case KeyCode::z:
        if (command && field->isUndoAvailable()) return inField(&QLineEdit::undo);
        break;
    case KeyCode::x:
        if (command) return inField(&QLineEdit::cut);
        break;
    case KeyCode::c:
        if (command) return inField(&QLineEdit::copy);
        break;
    case KeyCode::v:
        if (command) return inField(&QLineEdit::paste);
        break;
    case KeyCode::w:
        if (command) return [this] { picker_.wickWindowCloseButtonWasPressed(); };
        break;
    default:
        break;
    }
    return std::nullopt;
}

bool KeyDispatcher::handleKeyDown(const KeyEvent& event) {
    if (const auto command = pickerCommand(event)) {
        (*command)();
        return true;
    }
    if (pickerIsKeyWindow()) picker_.refresh();
    return false;
}

bool KeyDispatcher::handleKeyUp(const KeyEvent& event) const {
    if (!pickerIsKeyWindow()) return false;
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

} // namespace brimwick
