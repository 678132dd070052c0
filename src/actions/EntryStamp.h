#pragma once

#include <sys/stat.h>

#include <cstdint>
#include <string>
#include <vector>

namespace brimwick {

/// By what an entry is known to be still the one that was copied.
struct EntryStamp {
    dev_t device;
    ino_t inode;
    mode_t mode;
    uid_t owner;
    gid_t group;
    off_t size;
    std::int64_t modifiedSeconds;
    std::int64_t modifiedNanoseconds;
    nlink_t links;
    timespec changed; ///< the status, with anything else or alone

    explicit EntryStamp(const struct stat& status)
        : device(status.st_dev), inode(status.st_ino), mode(status.st_mode), owner(status.st_uid),
          group(status.st_gid), size(status.st_size), modifiedSeconds(status.st_mtim.tv_sec),
          modifiedNanoseconds(status.st_mtim.tv_nsec), links(status.st_nlink), changed(status.st_ctim) {}

    /// The status may have changed with the name of the entry.
    bool isSame(const EntryStamp& earlier) const {
        return device == earlier.device && inode == earlier.inode && mode == earlier.mode &&
               owner == earlier.owner && group == earlier.group && size == earlier.size &&
               modifiedSeconds == earlier.modifiedSeconds &&
               modifiedNanoseconds == earlier.modifiedNanoseconds;
    }
    /// Nothing at all has changed. Of a file of several names only what isSame() tells, since each of them
    /// that goes changes the status.
    bool isUnchanged(const EntryStamp& earlier) const {
        const bool hasOtherNames = !isFolder() && (links > 1 || earlier.links > 1);
        return isSame(earlier) && (hasOtherNames || (changed.tv_sec == earlier.changed.tv_sec &&
                                                     changed.tv_nsec == earlier.changed.tv_nsec));
    }
    bool isFolder() const { return S_ISDIR(mode); }
};

/// One entry of an item that was copied.
struct CopiedEntry {
    /// Empty for the item itself.
    std::string name;
    /// 0 for the item itself.
    std::size_t depth;
    EntryStamp stamp;
};

/// Every entry of an item, each folder before its entries, names in byte order.
using CopyLog = std::vector<CopiedEntry>;

} // namespace brimwick
