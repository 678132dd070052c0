#pragma once

#include "platform/linux/inotify/Inotify.h"
#include "platform/ports/FolderRules.h"

#include <cstdint>
#include <string>
#include <vector>

namespace brimwick {

/// What a batch of events says about folders that the index takes up.
struct FolderChanges {
    struct Place {
        WatchNumber watch;
        /// The name of a folder that was moved there; empty for any other change.
        std::string movedIn;
    };

    /// One for each folder that came, went or was renamed, in order.
    std::vector<std::uint32_t> flags;
    /// Where that was.
    std::vector<Place> places;
    /// Events were lost.
    bool overflowed = false;
    /// A root may be gone.
    bool rootTouched = false;
    /// A file system was unmounted.
    bool unmounted = false;
    /// Watches that have ended with their folders.
    std::vector<WatchNumber> ended;
};

/// What one batch says; the two halves of a rename are joined when both are in it. Names are copied.
FolderChanges folderChanges(const std::vector<InotifyEvent>& events, const FolderRules& rules);

} // namespace brimwick
