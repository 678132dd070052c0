#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <optional>

namespace brimwick {

/// How folders are watched, as far as a test may want it otherwise.
struct WatchingOptions {
    struct Figures {
        std::size_t watched = 0;
        /// Folders that are compared on the slow timer.
        std::size_t compared = 0;
    };

    /// As if the system allowed this many watches.
    std::optional<std::size_t> watchLimit;
    /// As if the system had no watching at all.
    bool withoutInotify = false;
    /// Rest between two comparisons of the folders that could not be watched, at least.
    std::chrono::milliseconds slowInterval{30'000};
    /// Called on the watching thread before it reads what came.
    std::function<void()> beforeReading;
    /// Called on the watching thread when it has nothing left to do for the last walk.
    std::function<void(const Figures&)> settled;
};

} // namespace brimwick
