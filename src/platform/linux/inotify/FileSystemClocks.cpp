#include "platform/linux/inotify/FileSystemClocks.h"

#include <linux/magic.h>
#include <sys/vfs.h>

#include <algorithm>
#include <array>

namespace brimwick {
namespace {

/// Served by another machine, or by a program that may pass on what one says.
constexpr std::array<unsigned, 9> foreign = {NFS_SUPER_MAGIC,  SMB_SUPER_MAGIC,  CIFS_SUPER_MAGIC,
                                             SMB2_SUPER_MAGIC, FUSE_SUPER_MAGIC, V9FS_MAGIC,
                                             CEPH_SUPER_MAGIC, AFS_SUPER_MAGIC,  CODA_SUPER_MAGIC};

bool hasOurClock(const char* path) {
    struct statfs status {};
    if (path == nullptr || statfs(path, &status) != 0) return false;
    return std::ranges::find(foreign, static_cast<unsigned>(status.f_type)) == foreign.end();
}

} // namespace

bool FileSystemClocks::areOurs(dev_t fileSystem, const char* path) {
    const auto [known, isNew] = known_.try_emplace(fileSystem, false);
    if (isNew) known->second = hasOurClock(path);
    return known->second;
}

} // namespace brimwick
