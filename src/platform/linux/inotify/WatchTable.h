#pragma once

#include "platform/linux/inotify/Inotify.h"
#include "platform/ports/FolderList.h"

#include <cstddef>
#include <limits>
#include <optional>
#include <span>
#include <vector>

namespace brimwick {

/// Which folders the watches stand for. A folder that was found by two ways has two numbers and one watch.
/// Eight bytes a folder. One thread.
class WatchTable {
  public:
    struct Entry {
        WatchNumber watch;
        FolderNumber folder;
        auto operator<=>(const Entry&) const = default;
    };
    /// Stands for a folder that is watched and not in the list.
    static constexpr FolderNumber nowhere = std::numeric_limits<FolderNumber>::max();

    void assign(std::vector<Entry> entries);
    /// Forgets watches that have ended.
    void erase(std::vector<WatchNumber> watches);

    /// Position of the watch's first entry; fast when asked in about the order of the watches.
    std::optional<std::size_t> find(WatchNumber watch);
    std::span<const Entry> entriesOf(WatchNumber watch) const;
    const std::vector<Entry>& entries() const { return entries_; }
    /// How many watches.
    std::size_t watchCount() const { return watchCount_; }

  private:
    void count();

    std::vector<Entry> entries_;
    std::size_t watchCount_ = 0;
    std::size_t expected_ = 0;
};

} // namespace brimwick
