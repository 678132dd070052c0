#pragma once

#include "platform/linux/inotify/LateComparison.h"
#include "platform/linux/inotify/WatchLimit.h"
#include "platform/linux/inotify/WatchTable.h"

#include <vector>

namespace brimwick {

/// What stays from one following of a walk to the next. One thread.
struct WatchState {
    explicit WatchState(WatchLimit watchLimit) : limit(watchLimit) {}

    WatchTable table;
    WatchLimit limit;
    /// Watches that may be younger than the walk that is followed next; in order.
    std::vector<WatchNumber> untrusted;
    /// Watches of the table that the system has ended.
    std::vector<WatchNumber> ended;
    /// The highest number that a watch ever had.
    WatchNumber highest = -1;
    /// Folders without a watch for want of room.
    std::vector<LateComparison::Entry> unwatched;
};

} // namespace brimwick
