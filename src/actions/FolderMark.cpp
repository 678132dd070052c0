#include "actions/FolderMark.h"

#include <linux/magic.h>
#include <sys/stat.h>
#include <sys/statfs.h>

#include <algorithm>
#include <array>
#include <cerrno>

namespace brimwick {

namespace {

bool numbersAnew(long fileSystem) {
    return fileSystem == MSDOS_SUPER_MAGIC || fileSystem == EXFAT_SUPER_MAGIC ||
           fileSystem == FUSE_SUPER_MAGIC;
}

} // namespace

std::optional<FolderMark> FolderMark::of(int folder) {
    struct statfs information {};
    struct stat status {};
    // Some file systems in user space do not know of what kind they are.
    if (fstatfs(folder, &information) != 0 && errno != ENOSYS && errno != EOPNOTSUPP) return std::nullopt;
    if (fstat(folder, &status) != 0) return std::nullopt;
    return FolderMark{information.f_type, status.st_ino};
}

bool FolderMark::isLocal() const {
    static constexpr std::array<long, 7> known = {EXT4_SUPER_MAGIC, XFS_SUPER_MAGIC, BTRFS_SUPER_MAGIC,
                                                  F2FS_SUPER_MAGIC, TMPFS_MAGIC,     MSDOS_SUPER_MAGIC,
                                                  EXFAT_SUPER_MAGIC};
    return std::ranges::find(known, fileSystem) != known.end();
}

bool FolderMark::fits(int folder) const {
    const auto now = of(folder);
    return now && now->fileSystem == fileSystem && (now->inode == inode || numbersAnew(fileSystem));
}

} // namespace brimwick
