#pragma once

#include "actions/FileJournal.h"
#include "actions/WorkRunner.h"
#include "feedback/SoundBox.h"
#include "feedback/UserNotifications.h"
#include "model/BWSelectedFileOrFolder.h"
#include "model/Mode.h"
#include "model/PreferencesStore.h"

#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

namespace brimwick {

/// What actions need to handle files.
struct ActionServices {
    FileJournal& journal;
    WorkRunner& workRunner;
};

/// What an action uses of the model. All of it outlives the action.
struct ActionModel {
    const PreferencesStore& preferences;
    SoundBox& sounds;
    ActionServices services;
    std::string realHomeDirectory;
};

/// One move or copy of some files into one folder, which can be done, undone and redone. Main thread only.
class BWAction {
  public:
    using Files = std::vector<BWSelectedFileOrFolder>;

    /// A move without files and folders. `view` outlives the action.
    BWAction(ActionModel model, UserNotifications& view);

    /// Does or redoes it for 0, undoes it for any other value. Returns when the files are handled; tells the
    /// user of each, and plays one sound. Files that cannot be read are left out. True when all others were
    /// handled; false at the first that failed, and then both lists stay as they were.
    bool performActionInDirection(std::int32_t direction);
    /// A path in the folder of the taken one at which nothing lies, numbered on through the life of the
    /// process.
    static std::string targetPathWithUniqueFileName(const std::string& takenPath);

    const std::string& uuid() const { return uuid_; }
    void setUuid(std::string uuid) { uuid_ = std::move(uuid); }
    std::chrono::system_clock::time_point dateAndTime() const { return dateAndTime_; }
    void setDateAndTime(std::chrono::system_clock::time_point moment) { dateAndTime_ = moment; }
    const BWSelectedFileOrFolder& sourceFolder() const { return sourceFolder_; }
    void setSourceFolder(BWSelectedFileOrFolder folder) { sourceFolder_ = std::move(folder); }
    /// Where the files are before it is done, or after it was undone.
    const Files& sourceFiles() const { return sourceFiles_; }
    void setSourceFiles(Files files) { sourceFiles_ = std::move(files); }
    const BWSelectedFileOrFolder& targetFolder() const { return targetFolder_; }
    void setTargetFolder(BWSelectedFileOrFolder folder) { targetFolder_ = std::move(folder); }
    /// Where the files are after it was done.
    const Files& targetFiles() const { return targetFiles_; }
    void setTargetFiles(Files files) { targetFiles_ = std::move(files); }
    /// `BWModeMove`; any other value is a copy.
    Mode actionType() const { return actionType_; }
    void setActionType(Mode type) { actionType_ = type; }
    const ActionModel& model() const { return model_; }
    UserNotifications& view() const { return view_; }

  private:
    bool isCopy() const { return actionType_ != BWModeMove; }
    void playSound(const BWSelectedFileOrFolder& folder, bool forwards) const;

    std::string uuid_;
    std::chrono::system_clock::time_point dateAndTime_;
    BWSelectedFileOrFolder sourceFolder_;
    Files sourceFiles_;
    BWSelectedFileOrFolder targetFolder_;
    Files targetFiles_;
    Mode actionType_ = BWModeMove;
    ActionModel model_;
    UserNotifications& view_;
};

} // namespace brimwick
