#include "platform/linux/inotify/SubfolderComparison.h"

#include "platform/linux/inotify/FolderPath.h"
#include "platform/ports/FolderEventStream.h"

#include <fcntl.h>

#include <algorithm>
#include <cstring>

namespace brimwick {

std::uint32_t SubfolderComparison::difference(const FolderList& list, FolderNumber folder,
                                              const std::string& path) {
    inList_.clear();
    for (FolderNumber next = folder + 1; next < list.size(); ++next) {
        const auto parent = list.parent(next);
        if (!parent || *parent < folder) break;
        if (*parent == folder) inList_.push_back(list.fileName(next));
    }
    readSubfolders(path, !list.parent(folder));
    std::ranges::sort(inList_);
    std::ranges::sort(onDisk_);
    if (inList_ == onDisk_) return 0;
    std::uint32_t flags = FolderEventFlag::isFolder;
    if (!std::ranges::includes(inList_, onDisk_)) flags |= FolderEventFlag::created;
    if (!std::ranges::includes(onDisk_, inList_)) flags |= FolderEventFlag::removed;
    return flags;
}

std::optional<struct stat> SubfolderComparison::status(const std::string& path, bool isRoot) {
    struct stat status {};
    const char* place = reachable(path);
    if (place == nullptr || fstatat(AT_FDCWD, place, &status, isRoot ? 0 : AT_SYMLINK_NOFOLLOW) != 0)
        return std::nullopt;
    if (!S_ISDIR(status.st_mode)) return std::nullopt;
    return status;
}

void SubfolderComparison::readSubfolders(const std::string& path, bool isRoot) {
    names_.clear();
    onDisk_.clear();
    const char* place = reachable(path);
    if (place == nullptr) return;
    const FileDescriptor directory(
        open(place, O_RDONLY | O_DIRECTORY | O_CLOEXEC | (isRoot ? 0 : O_NOFOLLOW)));
    if (!directory) return;
    rules_.appendSubfolderNames(directory.get(), names_);
    for (std::size_t start = 0; start < names_.size();) {
        onDisk_.emplace_back(names_.c_str() + start);
        start += onDisk_.back().size() + 1;
    }
}

} // namespace brimwick
