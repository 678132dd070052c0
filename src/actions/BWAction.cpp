#include "actions/BWAction.h"

#include "actions/HiddenName.h"
#include "actions/UniqueFileName.h"
#include "model/PathText.h"

#include <fcntl.h>
#include <unistd.h>

namespace brimwick {

namespace {

bool isReadable(const std::string& path) {
    return faccessat(AT_FDCWD, path.c_str(), R_OK, AT_EACCESS) == 0;
}

/// A file that was not there when its entry was made has no name in it.
std::string nameOf(const BWSelectedFileOrFolder& file) {
    return file.name().value_or(lastPathComponent(file.path()));
}

} // namespace

BWAction::BWAction(ActionModel model, UserNotifications& view)
    : uuid_(randomText() + randomText()), dateAndTime_(std::chrono::system_clock::now()),
      model_(std::move(model)), view_(view), transfer_(model_.realHomeDirectory) {}

std::string BWAction::targetPathWithUniqueFileName(const std::string& takenPath) {
    return uniquePath(takenPath);
}

bool BWAction::performActionInDirection(std::int32_t direction) {
    const bool forwards = direction == 0;
    const Files& files = forwards ? sourceFiles_ : targetFiles_;
    const BWSelectedFileOrFolder& folder = forwards ? targetFolder_ : sourceFolder_;
    Files result;
    for (const BWSelectedFileOrFolder& file : files) {
        if (!isReadable(file.path())) continue;
        const std::string name = nameOf(file);
        const auto path = handle(file.path(), name, folder.path(), forwards);
        if (!path) {
            reportFailure(path.error(), forwards);
            return false;
        }
        report(name, folder.path(), forwards);
        result.push_back(BWSelectedFileOrFolder::fileOrFolderWithPath(*path));
    }
    playSound(folder, forwards);
    (forwards ? targetFiles_ : sourceFiles_) = std::move(result);
    return true;
}

tl::expected<std::string, FileError> BWAction::handle(const std::string& path, const std::string& name,
                                                      const std::string& folder, bool forwards) const {
    const std::string plainPath = folder + "/" + name;
    const auto numberedPath = [&plainPath] { return targetPathWithUniqueFileName(plainPath); };
    const std::string destination = somethingLiesAt(plainPath) ? numberedPath() : plainPath;
    if (!isCopy()) return transfer_.move(path, destination, numberedPath);
    if (forwards) return transfer_.copy(path, destination, numberedPath);
    // What is recorded is the place in the source folder, at which nothing lies.
    return transfer_.moveToTrash(path, name).map([&destination](const std::string&) { return destination; });
}

void BWAction::report(const std::string& name, const std::string& folder, bool forwards) const {
    if (isCopy() && !forwards)
        view_.sendUserNotification("Undid previous copy; trashed file " + name);
    else
        view_.sendUserNotification((isCopy() ? "Copied file " : "Moved file ") + name + " to folder " +
                                   folder);
}

void BWAction::reportFailure(const FileError& error, bool forwards) const {
    const char* what = "Error moving file: ";
    if (isCopy()) what = forwards ? "Error copying file: " : "Error un-copying file: ";
    view_.sendUserNotification(what + error.description);
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
