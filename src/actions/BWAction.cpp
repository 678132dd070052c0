#include "actions/BWAction.h"

#include "actions/ActionRun.h"
#include "actions/HiddenName.h"
#include "actions/UniqueFileName.h"
#include "model/PathText.h"

namespace brimwick {

namespace {

/// A file that was not there when its entry was made has no name in it.
std::string nameOf(const BWSelectedFileOrFolder& file) {
    return file.name().value_or(lastPathComponent(file.path()));
}

/// Where a file was that is in the Trash now, nothing lies.
BWSelectedFileOrFolder entryOf(const std::string& path, FileOperation operation) {
    return operation == FileOperation::Trash ? BWSelectedFileOrFolder::fileOrFolderWithPath(path)
                                             : BWSelectedFileOrFolder::fileOrFolderJustPutAtPath(path);
}

std::string textOf(const ActionRun::Report& report, FileOperation operation, const std::string& folder) {
    switch (operation) {
    case FileOperation::Move:
        if (!report.path) return "Error moving file: " + report.path.error().description;
        return "Moved file " + report.name + " to folder " + folder;
    case FileOperation::Copy:
        if (!report.path) return "Error copying file: " + report.path.error().description;
        return "Copied file " + report.name + " to folder " + folder;
    case FileOperation::Trash:
        break;
    }
    if (!report.path) return "Error un-copying file: " + report.path.error().description;
    return "Undid previous copy; trashed file " + report.name;
}

std::string titleOf(FileOperation operation, const BWSelectedFileOrFolder& folder) {
    if (operation == FileOperation::Trash) return "Moving copies to the Trash";
    return (operation == FileOperation::Move ? "Moving to " : "Copying to ") + nameOf(folder);
}

} // namespace

BWAction::BWAction(ActionModel model, UserNotifications& view)
    : uuid_(randomText() + randomText()), dateAndTime_(std::chrono::system_clock::now()),
      model_(std::move(model)), view_(view) {}

std::string BWAction::targetPathWithUniqueFileName(const std::string& takenPath) {
    return uniquePath(takenPath);
}

bool BWAction::performActionInDirection(std::int32_t direction) {
    const bool forwards = direction == 0;
    const BWSelectedFileOrFolder& folder = forwards ? targetFolder_ : sourceFolder_;
    const Files& given = forwards ? sourceFiles_ : targetFiles_;
    std::vector<ActionRun::File> files;
    files.reserve(given.size());
    for (const BWSelectedFileOrFolder& file : given) files.push_back({file.path(), nameOf(file)});
    FileOperation operation = forwards ? FileOperation::Copy : FileOperation::Trash;
    if (!isCopy()) operation = FileOperation::Move;
    ActionRun run(operation, std::move(files), folder.path(), model_.realHomeDirectory,
                  model_.services.journal);

    Files result;
    result.reserve(given.size());
    bool succeeded = true;
    const auto report = [&] {
        for (const ActionRun::Report& done : run.takeReports()) {
            succeeded = done.path.has_value();
            if (succeeded) result.push_back(entryOf(*done.path, operation));
            view_.sendUserNotification(textOf(done, operation, folder.path()));
        }
    };
    model_.services.workRunner.run(
        {titleOf(operation, folder), [&run] { run.perform(); }, report, run.progress()});
    if (!succeeded) return false;
    playSound(folder, forwards);
    (forwards ? targetFiles_ : sourceFiles_) = std::move(result);
    return true;
}

void BWAction::playSound(const BWSelectedFileOrFolder& folder, bool forwards) const {
    const char* preference = isCopy() ? "NotificationSoundOnCopy" : "NotificationSoundOnMove";
    if (!model_.preferences.boolPreferenceWithKey(preference)) return;
    if (folder.name() == "Trash" || (isCopy() && !forwards))
        model_.sounds.playTrashSound();
    else if (isCopy())
        model_.sounds.playCopySound();
    else
        model_.sounds.playRandomSound(false);
}

} // namespace brimwick
