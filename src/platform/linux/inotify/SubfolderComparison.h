#pragma once

#include "platform/linux/inotify/ReachablePath.h"
#include "platform/ports/FolderList.h"
#include "platform/ports/FolderRules.h"

#include <sys/stat.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace brimwick {

/// Compares folders with what a walk found. One thread.
class SubfolderComparison {
  public:
    explicit SubfolderComparison(const FolderRules& rules) : rules_(rules) {}

    /// The flags of one event when the folder's subfolders on disk differ from those in the list; 0 when they
    /// are the same. A folder that cannot be read has none. `path` is the folder's.
    std::uint32_t difference(const FolderList& list, FolderNumber folder, const std::string& path);
    /// The folder's attributes; nothing when it is gone or no folder.
    std::optional<struct stat> status(const std::string& path, bool isRoot);
    /// What to hand to a system call in place of the path.
    const char* reachable(const std::string& path) { return reachable_.of(path); }

  private:
    void readSubfolders(const std::string& path, bool isRoot);

    FolderRules rules_;
    ReachablePath reachable_;
    std::string names_;
    std::vector<std::string_view> onDisk_;
    std::vector<std::string_view> inList_;
};

} // namespace brimwick
