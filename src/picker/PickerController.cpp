#include "picker/PickerController.h"

#include "feedback/Refusal.h"
#include "feedback/ShowInFinder.h"
#include "picker/BWWickTableView.h"
#include "picker/PickerGeometry.h"

#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace brimwick {

PickerController::PickerController(PickerSurroundings surroundings)
    : surroundings_(std::move(surroundings)),
      wickWindow_(surroundings_.notificationCenter, surroundings_.windowSystem), controls_(wickWindow_),
      searchResultsModel_(surroundings_.folderSearch, surroundings_.icons, surroundings_.realHomeDirectory),
      selectedFilesModel_(finderSelectedFiles_, surroundings_.icons) {
    controls_.searchResultsTableView->setModel(&searchResultsModel_);
    controls_.selectedFilesTableView->setModel(&selectedFilesModel_);
    // Both wait for the first index.
    controls_.searchField->setEnabled(false);
    controls_.wickWindowMoveButton->setEnabled(false);
    wickWindow_.setLayoutHandler([this] { controls_.layOut(mode_); });
    wickWindow_.setDidResignKeyHandler([this] { controls_.selectedFilesTableView->setVisible(false); });
    surroundings_.folderSearch.setPresenter(*this);
    surroundings_.fileManager.setFolderShownHandler([this] { folderWasShown(); });
    connectControls();
}

PickerController::~PickerController() {
    surroundings_.fileManager.setFolderShownHandler(nullptr);
}

void PickerController::connectControls() {
    const auto pressed = [this](QPushButton* button, void (PickerController::*handler)()) {
        QObject::connect(button, &QPushButton::clicked, &wickWindow_,
                         [this, handler] { (this->*handler)(); });
    };
    const auto chosen = [this](QAction* item, void (PickerController::*handler)()) {
        QObject::connect(item, &QAction::triggered, &wickWindow_, [this, handler] { (this->*handler)(); });
    };
    const auto doubleClicked = [this](BWWickTableView* table, void (PickerController::*handler)()) {
        QObject::connect(table, &QTableView::doubleClicked, &wickWindow_,
                         [this, handler] { (this->*handler)(); });
    };
    pressed(controls_.wickWindowMoveButton, &PickerController::wickWindowMoveButtonWasPressed);
    pressed(controls_.wickWindowShowInFinderButton,
            &PickerController::wickWindowShowInFinderButtonWasPressed);
    pressed(controls_.wickWindowCloseButton, &PickerController::wickWindowCloseButtonWasPressed);
    chosen(controls_.wickContextMenuMoveFileMenuItem, &PickerController::wickContextMenuMoveFileSelected);
    chosen(controls_.wickContextMenuShowInFinderMenuItem,
           &PickerController::wickContextMenuShowInFinderSelected);
    chosen(controls_.selectedFilesContextMenuShowInFinderMenuItem,
           &PickerController::selectedFilesContextMenuShowInFinderMenuItemSelected);
    doubleClicked(controls_.searchResultsTableView, &PickerController::searchResultsTableViewDoubleClick);
    doubleClicked(controls_.selectedFilesTableView, &PickerController::selectedFilesTableViewDoubleClick);
    QObject::connect(controls_.searchField, &QLineEdit::textChanged, &wickWindow_, [this] {
        if (wickWindow_.isActiveWindow()) search();
    });
}

std::string PickerController::searchText() const {
    return controls_.searchField->text().toStdString();
}

void PickerController::search() {
    showOrHideMessage();
    surroundings_.folderSearch.searchFor(searchText());
    enableDisableWickWindowControls();
}

std::int64_t PickerController::selectedSearchResultsRow() const {
    return controls_.searchResultsTableView->selectedRow();
}

void PickerController::selectSearchResultsRow(std::int64_t row) {
    const std::int64_t selected = clampedRow(row, searchResultsModel_.rowCount());
    controls_.searchResultsTableView->setCurrentIndex(searchResultsModel_.index(static_cast<int>(selected)));
}

void PickerController::moveCopyOrOpen(bool showInFinder) {
    if (searchResultsModel_.rowCount() == 0) {
        refuse("No folders are present in the list.");
        return;
    }
    const std::int64_t row = selectedSearchResultsRow();
    if (row < 0) return;
    const BWSelectedFileOrFolder folder = surroundings_.folderSearch.entryAt(static_cast<std::size_t>(row));
    if (mode_ != BWModeOpen && !showInFinder) {
        performAction(folder);
        return;
    }
    openFolder(folder);
    if (!showInFinder) return;
    const std::vector<BWSelectedFileOrFolder> files = finderSelectedFiles_;
    invokeBrimwickWithModeWithFinderSelectedFolders(mode_, &files);
    selectSearchResultsRow(row);
    returnsOverFolder_ = true;
}

void PickerController::folderWasShown() {
    if (!returnsOverFolder_ || !isVisible()) return;
    wickWindow_.makeKeyAndOrderFront();
    if (mode_ != BWModeOpen) controls_.selectedFilesTableView->setVisible(true);
}

void PickerController::performAction(const BWSelectedFileOrFolder& targetFolder) {
    const auto action =
        std::make_shared<BWAction>(ActionModel{surroundings_.preferences, surroundings_.sounds,
                                               surroundings_.actions, surroundings_.realHomeDirectory},
                                   surroundings_.notifications);
    action->setActionType(mode_);
    const std::vector<BWSelectedFileOrFolder> files = finderSelectedFilesCopy();
    action->setSourceFiles(files);
    if (!files.empty()) action->setSourceFolder(files.front().parentFolder());
    action->setTargetFolder(targetFolder);
    if (action->performActionInDirection(0)) surroundings_.undoStack.push(action);
    wickWindow_.setPhantomMode(true);
}

void PickerController::openFolder(const BWSelectedFileOrFolder& folder) {
    showInFinder(folder, surroundings_.fileManager, surroundings_.preferences, surroundings_.sounds);
}

void PickerController::showSelectedFileOrFolderInFinder() {
    if (finderSelectedFiles_.empty()) {
        refuse("No selected files or folders are present in the list.");
        return;
    }
    const int row = controls_.selectedFilesTableView->selectedRow();
    if (row < 0) {
        refuse("No selected files or folders are selected in the list.");
        return;
    }
    openFolder(finderSelectedFiles_.at(static_cast<std::size_t>(row)).parentFolder());
}

void PickerController::refuse(const std::string& text) {
    brimwick::refuse(surroundings_.sounds, surroundings_.notifications, text);
}

std::vector<BWSelectedFileOrFolder> PickerController::finderSelectedFilesCopy() const {
    std::vector<BWSelectedFileOrFolder> copy;
    for (const BWSelectedFileOrFolder& file : finderSelectedFiles_) copy.push_back(file.clone());
    return copy;
}

void PickerController::enableDisableWickWindowControls() {
    if (surroundings_.indexIsRebuilding()) return;
    const bool enabled = searchResultsModel_.rowCount() > 0;
    controls_.wickWindowMoveButton->setEnabled(enabled);
    controls_.wickWindowShowInFinderButton->setEnabled(enabled);
    controls_.wickContextMenuMoveFileMenuItem->setEnabled(enabled);
    controls_.wickContextMenuShowInFinderMenuItem->setEnabled(enabled);
}

void PickerController::enableWickWindow() {
    controls_.searchField->setEnabled(true);
    controls_.wickWindowMoveButton->setEnabled(true);
    controls_.wickWindowCurtain->hide();
}

void PickerController::activateFinder() {
    surroundings_.fileManager.activate();
}

void PickerController::wickWindowCloseButtonWasPressed() {
    wickWindow_.setPhantomMode(true);
    if (surroundings_.indexIsRebuilding()) surroundings_.showRebuildIndexProgressIndicator();
    activateFinder();
}

void PickerController::wickWindowClosed() {
    const QSize frame = wickWindow_.frameSize();
    const StoredPickerSize size = storedPickerSize(mode_, frame.width(), frame.height());
    PropertyListDictionary& preferences = surroundings_.preferences.preferences();
    preferences.set("WickWindowWidth", {std::to_string(size.width)});
    preferences.set("WickWindowHeight", {std::to_string(size.height)});
    surroundings_.preferences.savePreferences();
}

void PickerController::restoreWindowSize() {
    const PreferencesStore& preferences = surroundings_.preferences;
    wickWindow_.setFrameSize({windowLength(preferences.integerPreferenceWithKey("WickWindowWidth")),
                              windowLength(preferences.integerPreferenceWithKey("WickWindowHeight"))});
}

} // namespace brimwick
