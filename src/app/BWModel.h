#pragma once

#include "actions/BWAction.h"
#include "actions/BWStack.h"
#include "feedback/SoundBox.h"
#include "feedback/UserNotifications.h"
#include "hotkeys/HotKeyApplication.h"
#include "hotkeys/HotKeyRegistry.h"
#include "model/FolderIndexer.h"
#include "model/FolderSearch.h"
#include "model/IndexRebuilder.h"
#include "model/PreferencesStore.h"
#include "model/Resources.h"
#include "platform/ports/Ports.h"

#include <cstdint>
#include <functional>
#include <string>

namespace brimwick {

/// All state of the program, composed of what keeps its parts. Main thread only.
class BWModel {
  public:
    /// Makes the support folder below the home, loads the preferences, registers the hot keys, fills the list
    /// of indexed folders and plays the launch sound. `random` yields a fresh number at every call.
    BWModel(const Ports& ports, UserNotifications& notifications, Resources resources,
            std::string homeDirectory, std::function<std::uint32_t()> random);

    /// The home folder of the real user, whatever HOME says.
    static std::string realHomeDirectory();
    /// Asks for a version of another system: no.
    static bool isAtLeastMountainLion() { return false; }

    /// Creates the support folder with whatever is missing above it; false when that fails.
    bool makeBrimwickFolder() const;
    /// Registers the stored hot keys and takes the indexed folders from the preferences.
    void applyPreferencesAndUnregisterOldHotKeysAndRebuildIndex(bool unregisterOldHotKeys, bool rebuildIndex);

    const std::string& appSupportRootPath() const { return appSupportRootPath_; }
    const std::string& downloadPath() const { return downloadPath_; }
    const std::string& homeDirectory() const { return homeDirectory_; }
    PreferencesStore& preferences() { return preferences_; }
    FolderIndexer& folderIndexer() { return folderIndexer_; }
    FolderSearch& folderSearch() { return folderSearch_; }
    IndexRebuilder& indexRebuilder() { return indexRebuilder_; }
    SoundBox& sounds() { return sounds_; }
    HotKeyApplication& hotKeys() { return hotKeys_; }
    BWStack<BWAction>& undoStack() { return undoStack_; }
    BWStack<BWAction>& redoStack() { return redoStack_; }

  private:
    void initializeSounds();

    std::string homeDirectory_;
    std::string appSupportRootPath_;
    std::string downloadPath_;
    FolderIndexer folderIndexer_;
    PreferencesStore preferences_;
    FolderSearch folderSearch_;
    IndexRebuilder indexRebuilder_;
    SoundBox sounds_;
    HotKeyRegistry hotKeyRegistry_;
    HotKeyApplication hotKeys_;
    BWStack<BWAction> undoStack_;
    BWStack<BWAction> redoStack_;
};

} // namespace brimwick
