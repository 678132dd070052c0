#include "platform/linux/inotify/Suspicions.h"

#include "platform/linux/inotify/FolderPath.h"

#include <utility>

namespace brimwick {
namespace {

/// Beyond that another walk is cheaper than comparing.
constexpr std::size_t mostPlaces = 20'000;

std::vector<FolderNumber> subfolders(const FolderList& list, FolderNumber folder,
                                     const std::set<std::string>& names) {
    std::vector<FolderNumber> found;
    if (names.empty()) return found;
    const FolderNumber end = endOfSubtree(list, folder);
    for (FolderNumber next = folder + 1; next < end; ++next)
        if (list.parent(next) == folder && names.contains(std::string(list.fileName(next))))
            found.push_back(next);
    return found;
}

struct Comparing {
    const FolderList& list;
    SubfolderComparison& comparison;
    Pace& pace;
    FolderPath path;
    bool givenUp = false;

    std::uint32_t compareAll(FolderNumber begin, FolderNumber end) {
        std::uint32_t difference = 0;
        for (FolderNumber folder = begin; folder < end && difference == 0 && !givenUp; ++folder) {
            path.moveTo(folder);
            difference = comparison.difference(list, folder, path.text());
            givenUp = !pace.looksUp();
        }
        return difference;
    }
};

} // namespace

void Suspicions::add(const std::vector<FolderChanges::Place>& places) {
    if (everything_) return;
    for (const FolderChanges::Place& place : places) {
        const auto [known, isNew] = places_.try_emplace(place.watch);
        if (isNew) ++size_;
        if (!place.movedIn.empty() && known->second.insert(place.movedIn).second) ++size_;
    }
    if (size_ <= mostPlaces) return;
    clear();
    everything_ = true;
}

void Suspicions::clear() {
    everything_ = false;
    places_.clear();
    size_ = 0;
}

std::uint32_t Suspicions::difference(const FolderList& list, const WatchTable& table,
                                     SubfolderComparison& comparison, Pace& pace) const {
    Comparing comparing{list, comparison, pace, FolderPath(list)};
    // A copy: the pace may let others change the suspicions.
    for (const auto& [watch, movedIn] : std::map(places_)) {
        for (const WatchTable::Entry& entry : table.entriesOf(watch)) {
            if (entry.folder == WatchTable::nowhere) continue;
            std::uint32_t difference = comparing.compareAll(entry.folder, entry.folder + 1);
            if (difference != 0 || comparing.givenUp) return difference;
            for (const FolderNumber moved : subfolders(list, entry.folder, movedIn)) {
                difference = comparing.compareAll(moved, endOfSubtree(list, moved));
                if (difference != 0 || comparing.givenUp) return difference;
            }
        }
    }
    return 0;
}

} // namespace brimwick
