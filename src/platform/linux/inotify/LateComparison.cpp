#include "platform/linux/inotify/LateComparison.h"

#include "platform/linux/inotify/FolderPath.h"
#include "platform/linux/inotify/WalkStart.h"

#include <algorithm>

namespace brimwick {
namespace {

constexpr int restPerWork = 50;

} // namespace

std::chrono::nanoseconds LateComparison::timeToRemember(const std::optional<struct stat>& status) {
    if (!status) return missing;
    const auto changed = changeTime(*status);
    return changed >= wallClockNow() - coarsenessOfFileTimes ? unknown : changed;
}

void LateComparison::postpone() {
    due_ = Clock::now() + std::max<Clock::duration>(interval_, restPerWork * lastDuration_);
}

std::uint32_t LateComparison::pass(const FolderList& list, std::vector<Entry>& entries,
                                   SubfolderComparison& comparison, Pace& pace) {
    const auto begin = Clock::now();
    std::uint32_t difference = 0;
    FolderPath path(list);
    for (Entry& entry : entries) {
        path.moveTo(entry.folder);
        const auto status = comparison.status(path.text(), path.isRoot());
        const auto changed = status ? changeTime(*status) : missing;
        if (changed != entry.changed) {
            const auto toRemember = timeToRemember(status);
            difference = comparison.difference(list, entry.folder, path.text());
            if (difference != 0) break;
            entry.changed = toRemember;
        }
        if (!pace.keepsOn()) break;
    }
    lastDuration_ = Clock::now() - begin;
    postpone();
    return difference;
}

} // namespace brimwick
