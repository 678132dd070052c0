#include "model/FolderWalk.h"

#include "model/BWSelectedFileOrFolder.h"
#include "model/FolderListing.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>

namespace brimwick {
namespace {

constexpr std::size_t mostOpenLevels = 32;
constexpr int folderFlags = O_RDONLY | O_DIRECTORY | O_CLOEXEC;

/// A root may be a link.
FileDescriptor openRoot(const std::string& path) {
    return FileDescriptor(open(path.c_str(), folderFlags));
}

FileDescriptor openSubfolder(const FileDescriptor& parent, const std::string& name) {
    return FileDescriptor(openat(parent.get(), name.c_str(), folderFlags | O_NOFOLLOW));
}

bool isNoLongerAFolder(int error) {
    return error == ENOENT || error == ENOTDIR || error == ELOOP;
}

} // namespace

FolderWalk::FolderWalk(FolderTree& folders, FolderNameObserver observer, std::stop_token stop)
    : folders_(folders), observer_(std::move(observer)), stop_(std::move(stop)) {}

bool FolderWalk::addRootDirectoryAndSubFoldersToIndex(const std::string& rootPath) {
    const auto root = BWSelectedFileOrFolder::fileOrFolderWithPath(rootPath);
    const FolderNumber folder = folders_.addRoot(root.path(), root.name().value_or(""));
    if (!root.name()) return true;
    return deepEnumerateAllSubfoldersOfFolderWithPath(root.path(), folder);
}

bool FolderWalk::deepEnumerateAllSubfoldersOfFolderWithPath(const std::string& path, FolderNumber folder) {
    levels_.clear();
    pendingNames_.clear();
    if (FileDescriptor root = openRoot(path)) enter(folder, std::move(root));
    while (!levels_.empty() && !stop_.stop_requested()) {
        if (levels_.back().nextName < pendingNames_.size())
            descendIntoNextSubfolder();
        else
            leave(path);
    }
    return !stop_.stop_requested();
}

void FolderWalk::descendIntoNextSubfolder() {
    Level& level = levels_.back();
    const std::string name(pendingNames_.c_str() + level.nextName);
    level.nextName += name.size() + 1;

    observer_(name);
    FileDescriptor subfolder = openSubfolder(level.directory, name);
    if (!subfolder && isNoLongerAFolder(errno)) return;
    const FolderNumber folder = folders_.addSubfolder(level.folder, name);
    if (subfolder) enter(folder, std::move(subfolder));
}

void FolderWalk::enter(FolderNumber folder, FileDescriptor directory) {
    const std::size_t firstName = pendingNames_.size();
    appendSubfolderNames(directory.get(), pendingNames_);
    if (pendingNames_.size() == firstName) return;
    levels_.push_back({folder, std::move(directory), 0, 0, firstName, firstName});
    closeLevelFarAbove();
}

void FolderWalk::closeLevelFarAbove() {
    if (levels_.size() <= mostOpenLevels) return;
    Level& level = levels_[levels_.size() - 1 - mostOpenLevels];
    struct stat status {};
    if (!level.directory || fstat(level.directory.get(), &status) != 0) return;
    level.device = status.st_dev;
    level.inode = status.st_ino;
    level.directory.close();
}

void FolderWalk::leave(const std::string& rootPath) {
    const FileDescriptor left = std::move(levels_.back().directory);
    pendingNames_.resize(levels_.back().firstName);
    levels_.pop_back();
    if (levels_.empty() || levels_.back().directory) return;

    Level& level = levels_.back();
    const auto isLevel = [&level](const FileDescriptor& directory) {
        struct stat status {};
        return directory && fstat(directory.get(), &status) == 0 && status.st_dev == level.device &&
               status.st_ino == level.inode;
    };
    FileDescriptor directory(openat(left.get(), "..", folderFlags));
    // Somebody moved the folder that is being left: its way up ends elsewhere now.
    if (!isLevel(directory)) directory = reopenedFromRoot(rootPath);
    if (isLevel(directory))
        level.directory = std::move(directory);
    else
        pendingNames_.resize(level.nextName);
}

FileDescriptor FolderWalk::reopenedFromRoot(const std::string& rootPath) const {
    FileDescriptor directory = openRoot(rootPath);
    for (std::size_t depth = 1; depth < levels_.size() && directory; ++depth)
        directory = openSubfolder(directory, std::string(folders_.displayName(levels_[depth].folder)));
    return directory;
}

} // namespace brimwick
