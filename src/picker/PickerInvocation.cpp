// How the picker is opened: the mode, the layout, the items, the window.

#include "picker/BWWickTableView.h"
#include "picker/FinderSelection.h"
#include "picker/PickerController.h"
#include "picker/PickerGeometry.h"

#include <QAction>
#include <QGroupBox>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>

namespace brimwick {

namespace {

/// The smallest width at which the buttons do not touch.
constexpr int minimumWidth = 400;

/// The visible frame of the first screen; all zero when there is none.
ScreenRect screenRect() {
    const QScreen* screen = QGuiApplication::primaryScreen();
    if (screen == nullptr) return {};
    const QRect available = screen->availableGeometry();
    const int below = screen->geometry().bottom() - available.bottom();
    return {double(available.x()), double(below), double(available.width()), double(available.height())};
}

} // namespace

void PickerController::invokeBrimwickWithModeWithFinderSelectedFolders(
    Mode mode, const std::vector<BWSelectedFileOrFolder>* finderSelectedFolders) {
    const bool wasShowing = isVisible();
    if (wasShowing)
        wickWindowCloseButtonWasPressed();
    else if (!wickWindow_.isInPhantomMode())
        // Its title bar has ordered it out; the focus has gone where it belongs since.
        wickWindow_.setPhantomMode(true);
    mode_ = mode;
    returnsOverFolder_ = false;
    // The list handed in may be our own.
    const std::vector<BWSelectedFileOrFolder> handedIn =
        finderSelectedFolders != nullptr ? *finderSelectedFolders : std::vector<BWSelectedFileOrFolder>();
    finderSelectedFiles_.clear();
    selectedFilesModel_.reloadData();

    if (mode_ == BWModeOpen) {
        layOutForMode();
    } else {
        // Closing the picker has brought the file manager to the front.
        if (!wasShowing && !fileManagerIsFrontmost()) return;
        layOutForMode();
        if (finderSelectedFolders != nullptr) {
            finderSelectedFiles_ = handedIn;
        } else {
            if (!takeFinderSelection()) return;
            setTitles();
        }
        selectedFilesModel_.reloadData();
        controls_.selectedFilesTableView->setVisible(true);
    }
    showPicker();
}

void PickerController::layOutForMode() {
    const std::int64_t storedHeight = surroundings_.preferences.integerPreferenceWithKey("WickWindowHeight");
    const PickerGeometry geometry = pickerGeometry(mode_, storedHeight);
    const bool open = mode_ == BWModeOpen;
    wickWindow_.setFrameY(pickerY(screenRect()));
    wickWindow_.setMinimumFrameSize({minimumWidth, pickerGeometry(mode_, 0).height});
    wickWindow_.setFrameSize({wickWindow_.frameSize().width(), geometry.height});
    controls_.selectedFoldersBox->setVisible(geometry.selectedFoldersBoxIsVisible);
    controls_.searchFieldCaption->setText(open ? "Open:" : "To:");
    setWickWindowMessage();
    if (open) controls_.wickWindowMoveButton->setText("Open");
    controls_.wickWindowShowInFinderButton->setVisible(!open);
    controls_.wickContextMenuMoveFileMenuItem->setVisible(!open);
    controls_.layOut(mode_);
}

bool PickerController::fileManagerIsFrontmost() {
    const auto frontmost = surroundings_.fileManager.frontmostProcessName();
    return !frontmost || *frontmost == finderProcessName;
}

bool PickerController::takeFinderSelection() {
    FileManager& fileManager = surroundings_.fileManager;
    const std::vector<WindowTarget> targets = fileManager.windowTargets();
    if (!targets.empty()) fileManager.raise(targets.front());
    activateFinder();
    const std::string& home = surroundings_.realHomeDirectory;
    finderSelectedFiles_ = finderSelection(fileManager.selection(), home);
    if (finderSelectedFiles_.empty()) {
        fileManager.selectDesktop();
        finderSelectedFiles_ = finderSelection(fileManager.selection(), home);
    }
    if (finderSelectedFiles_.empty()) {
        refuse("No files selected in Finder. Please select files before invoking the Move command.");
        return false;
    }
    return true;
}

void PickerController::setTitles() {
    const bool one = finderSelectedFiles_.size() < 2;
    const QString verb = mode_ == BWModeMove ? "Move" : "Copy";
    controls_.wickWindowMoveButton->setText(verb);
    controls_.selectedFoldersBox->setTitle(verb + (one ? " file:" : " files:"));
    controls_.wickContextMenuMoveFileMenuItem->setText(verb + (one ? " File Here" : " Files Here"));
    controls_.layOut(mode_);
}

void PickerController::showPicker() {
    if (surroundings_.indexHasBeenInitialized()) showPrompt(true);
    surroundings_.hidePreferences();
    wickWindow_.setPhantomMode(false);
    enableDisableWickWindowControls();
    controls_.searchField->setFocus(Qt::ActiveWindowFocusReason);
    controls_.searchField->selectAll();
    if (surroundings_.indexIsRebuilding() && !surroundings_.indexHasBeenInitialized()) {
        surroundings_.showRebuildIndexProgressIndicator();
        return;
    }
    search();
}

} // namespace brimwick
