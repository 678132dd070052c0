#include "actions/FolderCursor.h"

#include "actions/OpenFolder.h"
#include "actions/SystemError.h"

#include <fcntl.h>
#include <sys/stat.h>

namespace brimwick {

namespace {

constexpr std::size_t levelsHeldOpen = 32;
} // namespace

FolderCursor::FolderCursor(FileDescriptor root) {
    levels_.push_back({"", std::move(root), 0, 0});
}

std::string FolderCursor::relativePath() const {
    std::string path;
    for (const Level& level : levels_) {
        if (!path.empty()) path += '/';
        path += level.name;
    }
    return path;
}

std::string FolderCursor::relativePathOf(const std::string& name) const {
    const std::string folder = relativePath();
    return folder.empty() ? name : folder + "/" + name;
}

std::error_code FolderCursor::enter(const std::string& name) {
    FileDescriptor descriptor = openFolderIn(folder(), name);
    if (!descriptor) return lastSystemError();
    struct stat status {};
    if (fstat(descriptor.get(), &status) != 0) return lastSystemError();
    levels_.push_back({name, std::move(descriptor), status.st_dev, status.st_ino});
    // The root stays open: it has no name to come back by.
    if (depth() > levelsHeldOpen) levels_[depth() - levelsHeldOpen].descriptor = FileDescriptor();
    return {};
}

std::error_code FolderCursor::leave() {
    Level& parent = levels_[depth() - 1];
    if (!parent.descriptor) {
        FileDescriptor descriptor = openFolderIn(folder(), "..");
        if (!descriptor) return lastSystemError();
        struct stat status {};
        if (fstat(descriptor.get(), &status) != 0) return lastSystemError();
        if (status.st_dev != parent.device || status.st_ino != parent.inode)
            return std::make_error_code(std::errc::device_or_resource_busy);
        parent.descriptor = std::move(descriptor);
    }
    levels_.pop_back();
    return {};
}

} // namespace brimwick
