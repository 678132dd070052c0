#include "actions/OpenFolders.h"

#include <sys/stat.h>

#include <algorithm>
#include <utility>

namespace brimwick {

namespace {

/// As many files are handled in a moment, and what happens to the path of a folder meanwhile might as well
/// have happened after it was opened.
constexpr int usesWithoutALook = 64;

} // namespace

tl::expected<OpenFolder, FileError> OpenFolders::open(const std::string& path) {
    struct stat status {};
    if (const auto known = folders_.find(path); known != folders_.end()) {
        if (++known->second.uses < usesWithoutALook) return known->second.folder;
        if (stat(path.c_str(), &status) == 0 && status.st_dev == known->second.device &&
            status.st_ino == known->second.inode) {
            known->second.uses = 0;
            return known->second.folder;
        }
        folders_.erase(known);
    }
    auto opened = OpenFolder::open(path);
    if (!opened || fstat(opened->descriptor(), &status) != 0) return opened;
    if (folders_.size() >= mostHeldOpen) folders_.clear();
    folders_.insert_or_assign(path, Known{*opened, status.st_dev, status.st_ino, 0});
    return opened;
}

tl::expected<ItemPlace, FileError> OpenFolders::openPlace(const std::string& path) {
    return open(parentPath(path)).map([&path](const OpenFolder& folder) {
        return ItemPlace{folder, lastPathComponent(path)};
    });
}

void OpenFolders::forget(const std::string& path) {
    std::erase_if(folders_, [&path](const auto& known) {
        const std::string& folder = known.first;
        return folder.starts_with(path) && (folder.size() == path.size() || folder[path.size()] == '/');
    });
}

void OpenFolders::noteChange(const OpenFolder& folder) {
    const auto isSame = [&folder](const OpenFolder& other) {
        return other.descriptor() == folder.descriptor();
    };
    if (std::ranges::none_of(changed_, isSame)) changed_.push_back(folder);
}

tl::expected<void, FileError> OpenFolders::syncChanged() {
    tl::expected<void, FileError> result;
    for (const OpenFolder& folder : std::exchange(changed_, {})) {
        const std::error_code error = folder.sync();
        if (error && result)
            result = tl::unexpected(
                fileError("Moved, but a power cut may undo it, in the folder", folder.path(), error));
    }
    return result;
}

} // namespace brimwick
