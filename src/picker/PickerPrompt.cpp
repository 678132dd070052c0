// What the picker shows of a search: the rows, and the prompt where there are none.

#include "picker/BWWickTableView.h"
#include "picker/PickerController.h"

#include <QLabel>
#include <QLineEdit>

namespace brimwick {

void PickerController::setWickWindowMessage() {
    controls_.typeTheNameMessageText->setText(
        mode_ == BWModeOpen ? "Type the name of the folder to open in the Search box."
                            : "Type the name of the destination folder in the Search box.");
}

void PickerController::showOrHideMessage() {
    showPrompt(controls_.searchField->text().isEmpty());
}

void PickerController::showPrompt(bool visible) {
    controls_.typeTheNameMessage->setVisible(visible);
    controls_.typeTheNameMessageText->setVisible(visible);
}

void PickerController::refresh() {
    setWickWindowMessage();
    showOrHideMessage();
    surroundings_.folderSearch.searchFor(searchText());
}

void PickerController::resultsWereReplaced() {
    searchResultsModel_.reloadData();
}

void PickerController::selectFirstResult() {
    selectSearchResultsRow(0);
}

void PickerController::showNoFoldersFound() {
    controls_.typeTheNameMessageText->setText("No folders found.");
    showPrompt(true);
}

void PickerController::hidePrompt() {
    showPrompt(false);
}

void PickerController::showDefaultPrompt() {
    setWickWindowMessage();
    showPrompt(true);
}

} // namespace brimwick
