#pragma once

#include "platform/ports/FileDescriptor.h"
#include "platform/ports/FolderRules.h"

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace brimwick {

/// Notices file systems that are mounted or unmounted at, above or below a root. One thread.
class MountWatch {
  public:
    explicit MountWatch(const FolderRules& rules);

    /// To be polled for POLLPRI; -1 when the mounts cannot be read.
    int descriptor() const { return mounts_.get(); }
    /// One event for what came and one for what went since it was asked last; nothing the first time.
    std::vector<std::uint32_t> changes(const std::set<std::string>& roots);

  private:
    /// Mount points, each with what is mounted there. One may hide another.
    using Mounts = std::multiset<std::pair<std::string, std::string>>;

    Mounts presentMounts() const;
    bool hasRelevantBeside(const Mounts& others, const Mounts& mounts,
                           const std::set<std::string>& roots) const;
    bool concerns(const std::string& mountPoint, const std::set<std::string>& roots) const;

    FolderRules rules_;
    FileDescriptor mounts_;
    /// Nothing before it was asked for the first time.
    std::optional<Mounts> known_;
};

} // namespace brimwick
