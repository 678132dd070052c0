#pragma once

#include "platform/ports/FileDescriptor.h"

#include <cstdint>
#include <set>
#include <string>
#include <vector>

namespace brimwick {

/// Notices file systems that are mounted or unmounted at, above or below a root. One thread.
class MountWatch {
  public:
    /// `isIndexedName` tells whether the index takes up a subfolder of this name.
    explicit MountWatch(bool (*isIndexedName)(std::string_view));

    /// To be polled for POLLPRI; -1 when the mounts cannot be read.
    int descriptor() const { return mounts_.get(); }
    /// One event for what came and one for what went since it was asked last; nothing the first time.
    std::vector<std::uint32_t> changes(const std::set<std::string>& roots);

  private:
    std::multiset<std::string> relevantMounts(const std::set<std::string>& roots) const;
    bool concerns(const std::string& mountPoint, const std::set<std::string>& roots) const;

    bool (*isIndexedName_)(std::string_view);
    FileDescriptor mounts_;
    bool asked_ = false;
    std::set<std::string> knownRoots_;
    std::multiset<std::string> known_;
};

} // namespace brimwick
