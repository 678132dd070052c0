#pragma once

#include <sys/types.h>

#include <optional>
#include <vector>

namespace brimwick {

/// Which file systems keep the link count of a folder as the number of its subfolders, of any kind, and two
/// more; the others have every folder listed. One thread.
class LinkCounts {
  public:
    /// Nothing while no folder of the device was looked at.
    std::optional<bool> areKeptOn(dev_t device);
    /// Looks at the file system of a folder that is open and lies on the device.
    bool lookAt(int directory, dev_t device);

  private:
    struct Device {
        dev_t number;
        bool keepsLinkCounts;
    };
    std::vector<Device> devices_;
    std::size_t last_ = 0;
};

/// How many subfolders a folder with this link count can have at most, where link counts are kept; nothing
/// where the count says nothing, as for folders with more than the file system counts.
std::optional<std::size_t> subfoldersByLinkCount(nlink_t linkCount);

} // namespace brimwick
