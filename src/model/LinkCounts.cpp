#include "model/LinkCounts.h"

#include <linux/magic.h>
#include <sys/vfs.h>

namespace brimwick {
namespace {

constexpr long xfsMagic = 0x58465342;

/// Only those that are known to: one that counts otherwise would hide folders.
bool keepsLinkCounts(long fileSystem) {
    switch (fileSystem) {
    case EXT4_SUPER_MAGIC: // ext2 and ext3 too
    case xfsMagic:
    case TMPFS_MAGIC:
    case F2FS_SUPER_MAGIC:
        return true;
    default:
        return false;
    }
}

} // namespace

std::optional<bool> LinkCounts::areKeptOn(dev_t device) const {
    const auto known = devices_.find(device);
    return known == devices_.end() ? std::nullopt : std::optional(known->second);
}

bool LinkCounts::areKeptOn(int directory, dev_t device) {
    if (const auto known = areKeptOn(device)) return *known;
    struct statfs fileSystem {};
    return devices_[device] = fstatfs(directory, &fileSystem) == 0 && keepsLinkCounts(fileSystem.f_type);
}

std::optional<std::size_t> subfoldersByLinkCount(nlink_t linkCount) {
    if (linkCount < 2) return std::nullopt;
    return linkCount - 2;
}

} // namespace brimwick
