#pragma once

#include "platform/linux/inotify/Pace.h"
#include "platform/linux/inotify/SubfolderComparison.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <vector>

namespace brimwick {

/// Notices changes of folders that could not be watched by comparing their times now and then: at most one
/// fiftieth of the time is spent on it. One thread.
class LateComparison {
  public:
    using Clock = std::chrono::steady_clock;
    struct Entry {
        FolderNumber folder;
        /// When it changed last, or `unknown`.
        std::chrono::nanoseconds changed;
    };
    static constexpr std::chrono::nanoseconds unknown{-1};
    static constexpr std::chrono::nanoseconds missing{-2};

    explicit LateComparison(std::chrono::milliseconds interval) : interval_(interval) {}

    /// What to remember of a folder that looks like this now. Unknown when a further change could leave the
    /// same time behind.
    static std::chrono::nanoseconds timeToRemember(const std::optional<struct stat>& status);

    /// The next pass is due after one interval.
    void postpone();
    Clock::time_point due() const { return due_; }
    /// Compares all and postpones the next pass. The flags of one event at the first real difference, which
    /// ends the pass; 0 otherwise, also when the pass was given up.
    std::uint32_t pass(const FolderList& list, std::vector<Entry>& entries, SubfolderComparison& comparison,
                       Pace& pace);

  private:
    std::chrono::milliseconds interval_;
    Clock::duration lastDuration_{0};
    Clock::time_point due_;
};

} // namespace brimwick
