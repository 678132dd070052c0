#pragma once

#include "actions/BWAction.h"
#include "actions/BWStack.h"
#include "feedback/SoundBox.h"
#include "feedback/UserNotifications.h"
#include "model/FolderSearch.h"
#include "model/Mode.h"
#include "model/PreferencesStore.h"
#include "model/WorkspaceNotificationCenter.h"
#include "picker/BWWickWindow.h"
#include "picker/PickerControls.h"
#include "picker/SearchResultsModel.h"
#include "picker/SelectedFilesModel.h"
#include "platform/ports/FileManager.h"

#include <functional>
#include <vector>

namespace brimwick {

/// What the picker uses of the rest of the program. All of it outlives the picker.
struct PickerSurroundings {
    PreferencesStore& preferences;
    FolderSearch& folderSearch;
    BWStack<BWAction>& undoStack;
    SoundBox& sounds;
    UserNotifications& notifications;
    ActionServices actions;
    FileManager& fileManager;
    WindowSystem& windowSystem;
    WorkspaceNotificationCenter& notificationCenter;
    const EntryIcons& icons;
    std::string realHomeDirectory;
    std::function<bool()> indexIsRebuilding;
    std::function<bool()> indexHasBeenInitialized;
    std::function<void()> showRebuildIndexProgressIndicator;
    std::function<void()> hidePreferences;
};

/// The picker: invoked in a mode, it shows the files in question, searches as the user types, and moves,
/// copies or opens. Main thread only.
class PickerController : public SearchPresenter {
  public:
    explicit PickerController(PickerSurroundings surroundings);
    PickerController(const PickerController&) = delete;
    PickerController& operator=(const PickerController&) = delete;
    ~PickerController() override;

    /// Opens the picker in a mode. Without a list, the items are what is selected in the file manager.
    void invokeBrimwickWithModeWithFinderSelectedFolders(
        Mode mode, const std::vector<BWSelectedFileOrFolder>* finderSelectedFolders);
    void activateFinder();

    void search();
    /// Brings rows and prompt in line with the present search text, ahead of a key that may change it.
    void refresh();
    /// Any number: what lies outside the list selects its first or last row.
    void selectSearchResultsRow(std::int64_t row);
    std::int64_t selectedSearchResultsRow() const;
    void moveCopyOrOpen(bool showInFinder);
    void showSelectedFileOrFolderInFinder();
    void setWickWindowMessage();
    void enableDisableWickWindowControls();
    void enableWickWindow();
    /// Shows or hides the prompt by the present search text.
    void showOrHideMessage();

    void wickWindowMoveButtonWasPressed() { moveCopyOrOpen(false); }
    void wickContextMenuMoveFileSelected() { moveCopyOrOpen(false); }
    void wickWindowShowInFinderButtonWasPressed() { moveCopyOrOpen(true); }
    void wickContextMenuShowInFinderSelected() { moveCopyOrOpen(true); }
    void searchResultsTableViewDoubleClick() { moveCopyOrOpen(true); }
    void selectedFilesTableViewDoubleClick() { showSelectedFileOrFolderInFinder(); }
    void selectedFilesContextMenuShowInFinderMenuItemSelected() { showSelectedFileOrFolderInFinder(); }
    void wickWindowCloseButtonWasPressed();
    /// The observer of "BWWickWindowClosed": keeps the window's size.
    void wickWindowClosed();
    /// Takes the size from the preferences.
    void restoreWindowSize();

    Mode mode() const { return mode_; }
    BWWickWindow& wickWindow() { return wickWindow_; }
    const PickerControls& controls() const { return controls_; }
    const std::vector<BWSelectedFileOrFolder>& finderSelectedFiles() const { return finderSelectedFiles_; }
    /// Fresh entries of the same paths.
    std::vector<BWSelectedFileOrFolder> finderSelectedFilesCopy() const;
    /// On the screen, which includes neither phantom mode nor a window ordered out by its title bar.
    bool isVisible() const { return wickWindow_.isVisible(); }
    std::string searchText() const;

    bool isInPhantomMode() const override { return wickWindow_.isInPhantomMode(); }
    void resultsWereReplaced() override;
    void selectFirstResult() override;
    void showNoFoldersFound() override;
    void hidePrompt() override;
    void showDefaultPrompt() override;

  private:
    void connectControls();
    void layOutForMode();
    bool fileManagerIsFrontmost();
    /// False when there is nothing to act on; the user has been told.
    bool takeFinderSelection();
    void setTitles();
    void showPicker();
    void refuse(const std::string& text);
    void performAction(const BWSelectedFileOrFolder& targetFolder);
    void showPrompt(bool visible);
    void openFolder(const BWSelectedFileOrFolder& folder);
    void folderWasShown();

    PickerSurroundings surroundings_;
    Mode mode_ = BWModeMove;
    std::vector<BWSelectedFileOrFolder> finderSelectedFiles_;
    BWWickWindow wickWindow_;
    PickerControls controls_;
    SearchResultsModel searchResultsModel_;
    SelectedFilesModel selectedFilesModel_;
    /// A folder is being shown over which the picker is to appear again.
    bool returnsOverFolder_ = false;
};

} // namespace brimwick
