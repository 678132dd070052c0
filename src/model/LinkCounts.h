#pragma once

#include <sys/types.h>

#include <map>
#include <optional>

namespace brimwick {

/// Which file systems keep the link count of a folder as the number of its subfolders, of any kind, and two
/// more; the others have every folder listed. One thread.
class LinkCounts {
  public:
    /// Looks at the file system of an open folder that lies on the device, the first time.
    bool areKeptOn(int directory, dev_t device);
    /// The same without a folder; nothing while none of the device was looked at.
    std::optional<bool> areKeptOn(dev_t device) const;

  private:
    std::map<dev_t, bool> devices_;
};

/// How many subfolders a folder with this link count can have at most, where link counts are kept; nothing
/// where the count says nothing, as for folders with more than the file system counts.
std::optional<std::size_t> subfoldersByLinkCount(nlink_t linkCount);

} // namespace brimwick
