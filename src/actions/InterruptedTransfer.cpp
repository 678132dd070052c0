#include "actions/InterruptedTransfer.h"

#include <linux/magic.h>
#include <sys/stat.h>
#include <sys/statfs.h>

namespace brimwick {

namespace {

bool numbersAnew(long fileSystem) {
    return fileSystem == MSDOS_SUPER_MAGIC || fileSystem == EXFAT_SUPER_MAGIC ||
           fileSystem == FUSE_SUPER_MAGIC;
}

} // namespace

FolderMark FolderMark::of(int folder) {
    struct statfs information {};
    struct stat status {};
    if (fstatfs(folder, &information) != 0 || fstat(folder, &status) != 0) return {};
    return {information.f_type, status.st_ino};
}

bool FolderMark::fits(int folder) const {
    const FolderMark now = of(folder);
    return now.fileSystem == fileSystem && (now.inode == inode || numbersAnew(fileSystem));
}

} // namespace brimwick
