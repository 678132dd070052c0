#pragma once

#include "feedback/SoundBox.h"
#include "feedback/UserNotifications.h"
#include "hotkeys/PreferencesPlace.h"
#include "model/FolderIndexer.h"
#include "model/IndexRebuilder.h"
#include "model/PreferencesStore.h"
#include "picker/EntryIcons.h"
#include "platform/ports/FileManager.h"

#include <functional>
#include <memory>
#include <set>
#include <string>
#include <vector>

class QFileDialog;

namespace brimwick {

class BWPreferencesWindow;
class PreferencesControls;
class PreferencesFocus;

/// What the list of indexed folders uses of the rest of the program. All of it outlives the controller.
struct IndexedFoldersSurroundings {
    FolderIndexer& folderIndexer;
    IndexRebuilder& indexRebuilder;
    PreferencesStore& preferences;
    SoundBox& sounds;
    UserNotifications& notifications;
    FileManager& fileManager;
    const EntryIcons& icons;
    std::string realHomeDirectory;
    /// Ends the program and starts it again.
    std::function<void()> restart;
};

/// The list of indexed folders in the preferences window: shown and changed. Each change is saved at once;
/// the index is rebuilt when the window goes. Main thread only.
class IndexedFoldersController {
  public:
    /// Everything outlives the controller.
    IndexedFoldersController(IndexedFoldersSurroundings surroundings, BWPreferencesWindow& window,
                             PreferencesControls& controls, PreferencesFocus& focus, PreferencesPlace& place);
    IndexedFoldersController(const IndexedFoldersController&) = delete;
    IndexedFoldersController& operator=(const IndexedFoldersController&) = delete;
    ~IndexedFoldersController();

    /// Asks for a folder to add; returns at once.
    void selectIndexedFolder();
    /// Ends what selectIndexedFolder() began, as if the user had cancelled it.
    void closePanel();
    void removeIndexedFolder();
    void showIndexedFolderInFinder();
    void addTrashFolderButtonWasPressed();
    void addTrashFolderToIndexedFolders();
    /// Adds folders by their paths, of which there is one at least, each by the rule of the list.
    void addIndexedFolders(const std::vector<std::string>& paths);
    /// The folders of the list are those that are watched for changes; others are from the next start on.
    void noteWatchedFolders();
    bool hasTrashFolder() const;
    /// Selects the first row of exactly that path.
    void selectIndexedFolderWithPath(const std::string& path);
    void subFolderAlert();

    void showIndexedFoldersCurtain();
    void hideIndexedFoldersCurtain();
    /// What can be done to the list as it is; changes nothing while the index is being rebuilt.
    void enableDisablePreferencesWindowControls();
    /// The index is there, or will not come.
    void rebuildHasEnded();
    void rebuildIndexCheckBoxChanged();
    /// Shows the list as the model has it; the selection is gone.
    void reload();

  private:
    std::vector<BWSelectedFileOrFolder>& folders() const;
    void focusList();
    /// The selected row, or nothing, and then the user was told why.
    int rowToWorkWith();
    /// `loopLevel`: how deep the loops of events were nested when the panel came.
    void panelHasEnded(const QFileDialog* panel, bool accepted, int loopLevel);
    void restartButtonWasPressed();
    /// What is no folder is told and left out.
    void foldersWereDropped(const std::vector<std::string>& paths);
    void forceRebuild();
    void updateEnabledState();

    IndexedFoldersSurroundings surroundings_;
    BWPreferencesWindow& window_;
    PreferencesControls& controls_;
    PreferencesFocus& focus_;
    PreferencesPlace& place_;
    std::set<std::string> watchedFolders_;
    std::unique_ptr<QFileDialog> panel_;
};

} // namespace brimwick
