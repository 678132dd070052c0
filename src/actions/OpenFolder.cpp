#include "actions/OpenFolder.h"

#include "actions/SystemError.h"
#include "model/PathText.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <memory>

namespace brimwick {

tl::expected<OpenFolder, FileError> OpenFolder::open(const std::string& path) {
    bool listable = true;
    FileDescriptor descriptor(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!descriptor && errno == EACCES) {
        listable = false;
        descriptor = FileDescriptor(::open(path.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
        if (!descriptor) errno = EACCES;
    }
    const auto mark = descriptor ? FolderMark::of(descriptor.get()) : std::nullopt;
    if (!mark) return tl::unexpected(fileError("Could not open the folder", path, lastSystemError()));
    return OpenFolder(std::make_shared<const Opened>(Opened{std::move(descriptor), path, *mark, listable}));
}

std::error_code OpenFolder::sync() const {
    if (opened_->listable) return syncDescriptor(descriptor());
    // A folder that cannot be read cannot be flushed alone; everything is, then.
    ::sync();
    return {};
}

std::error_code OpenFolder::syncFileSystem() const {
    // One that cannot be read stands for no file system.
    if (opened_->listable && syncfs(descriptor()) != 0) return lastSystemError();
    // A file system in user space is told of single folders only; without a listable one everything is
    // flushed.
    return sync();
}

tl::expected<bool, std::error_code> OpenFolder::isAtOrBelow(dev_t device, ino_t inode) const {
    FileDescriptor parent;
    int here = descriptor();
    struct stat status {};
    if (fstat(here, &status) != 0) return tl::unexpected(lastSystemError());
    while (status.st_dev != device || status.st_ino != inode) {
        FileDescriptor above(openat(here, "..", O_PATH | O_DIRECTORY | O_CLOEXEC));
        if (!above) return tl::unexpected(lastSystemError());
        struct stat aboveStatus {};
        if (fstat(above.get(), &aboveStatus) != 0) return tl::unexpected(lastSystemError());
        if (aboveStatus.st_dev == status.st_dev && aboveStatus.st_ino == status.st_ino) return false;
        status = aboveStatus;
        parent = std::move(above);
        here = parent.get();
    }
    return true;
}

tl::expected<ItemPlace, FileError> ItemPlace::open(const std::string& path) {
    auto folder = OpenFolder::open(parentPath(path));
    if (!folder) return tl::unexpected(folder.error());
    return ItemPlace{std::move(*folder), lastPathComponent(path)};
}

FileDescriptor openFolderIn(int parent, const std::string& name) {
    return FileDescriptor(openat(parent, name.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
}

tl::expected<std::vector<std::string>, std::error_code> namesInFolder(int folder) {
    // A descriptor of its own: the reading position of a duplicate would be shared.
    FileDescriptor listing = openFolderIn(folder, ".");
    if (!listing) return tl::unexpected(lastSystemError());
    const std::unique_ptr<DIR, int (*)(DIR*)> stream(fdopendir(listing.get()), closedir);
    if (!stream) return tl::unexpected(lastSystemError());
    listing.release();
    std::vector<std::string> names;
    for (;;) {
        errno = 0;
        const dirent* entry = readdir(stream.get());
        if (entry == nullptr) break;
        const std::string name = entry->d_name;
        if (name != "." && name != "..") names.push_back(name);
    }
    if (errno != 0) return tl::unexpected(lastSystemError());
    std::ranges::sort(names);
    return names;
}

std::error_code syncDescriptor(int descriptor) {
    if (fsync(descriptor) == 0 || errno == EINVAL || errno == ENOSYS || errno == EOPNOTSUPP) return {};
    return lastSystemError();
}

} // namespace brimwick
