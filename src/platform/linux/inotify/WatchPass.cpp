#include "platform/linux/inotify/WatchPass.h"

#include "platform/linux/inotify/Paths.h"
#include "platform/ports/FolderEventStream.h"

#include <algorithm>

namespace brimwick {
namespace {

// Added to what a watch of the same folder looks for already: a root may lie inside another.
constexpr std::uint32_t subfoldersComeAndGo = namesComeAndGo | IN_ONLYDIR | IN_EXCL_UNLINK | IN_MASK_ADD;
constexpr std::uint32_t ofSubfolder = subfoldersComeAndGo | IN_DONT_FOLLOW;
constexpr std::uint32_t ofRoot = subfoldersComeAndGo | IN_DELETE_SELF | IN_MOVE_SELF;

} // namespace

WatchPass::WatchPass(const FolderList& list, const WalkStart& start, const std::vector<std::string>& roots,
                     const FolderRules& rules, const Inotify& inotify, SubfolderComparison& comparison,
                     WatchState& state, std::function<bool()> carryOn)
    : list_(list), start_(start), inotify_(inotify), comparison_(comparison), state_(state),
      pace_([this, carryOn = std::move(carryOn)] {
          if (!carryOn()) return false;
          latestWatches_.clear();
          return true;
      }),
      path_(list), coverage_(roots, rules) {
    state_.table.erase(std::exchange(state_.ended, {}));
    state_.limit.startAnew();
    watchCount_ = state_.table.watchCount();
    seen_.resize(state_.table.entries().size());
    entries_.reserve(list.size());
}

bool WatchPass::run() {
    for (FolderNumber folder = 0; folder < list_.size(); ++folder) {
        path_.moveTo(folder);
        if (coverage_.covers(path_)) visit(folder);
        if (pace_.keepsOn()) continue;
        abandon();
        return false;
    }
    return finish();
}

void WatchPass::visit(FolderNumber folder) {
    if (comparedDepth_ && path_.depth() <= *comparedDepth_) comparedDepth_.reset();
    recent_.resize(path_.depth() + 1);
    recent_.back() = false;

    const Watching watching = watch(folder);
    if (watching == Watching::Unreachable) return;
    if (watching == Watching::SinceBefore) {
        if (comparedDepth_) compare(folder);
        return;
    }
    const auto status = comparison_.status(path_.text(), path_.isRoot());
    if (watching == Watching::NoRoom) unwatched_.push_back({folder, LateComparison::timeToRemember(status)});
    if (status) verify(folder, *status);
}

WatchPass::Watching WatchPass::watch(FolderNumber folder) {
    if (path_.isRoot() && !path_.text().starts_with('/')) return Watching::Unreachable;
    // Whatever is yet to come would need a watch more.
    if (watchCount_ >= state_.limit.allowed() && allOlderWatchesSeen()) return Watching::NoRoom;
    const char* place = comparison_.reachable(path_.text());
    if (place == nullptr) return Watching::Unreachable;
    const WatchNumber watch = inotify_.add(place, path_.isRoot() ? ofRoot : ofSubfolder);
    if (watch >= 0) return remember(watch, folder);
    if (!inotify_.lacksRoom()) return Watching::Unreachable;
    if (inotify_.error() == 0) state_.limit.wasReachedAt(watchCount_);
    return Watching::NoRoom;
}

WatchPass::Watching WatchPass::remember(WatchNumber watch, FolderNumber folder) {
    Watching watching = Watching::Newly;
    if (const auto position = state_.table.find(watch)) {
        if (!seen_[*position]) ++seenCount_;
        seen_[*position] = true;
        if (!std::ranges::binary_search(state_.untrusted, watch)) watching = Watching::SinceBefore;
    } else if (watch > state_.highest) {
        state_.highest = watch;
        if (watchCount_ >= state_.limit.allowed()) {
            inotify_.remove(watch);
            return Watching::NoRoom;
        }
        ++watchCount_;
        newWatches_.push_back(watch);
        latestWatches_.push_back(watch);
    }
    entries_.push_back({watch, folder});
    return watching;
}

void WatchPass::verify(FolderNumber folder, const struct stat& status) {
    const bool recent = mayHaveChanged(path_.text(), status);
    recent_.back() = recent;
    if (path_.isRoot()) noteAppearedRoot(folder, recent);
    if (recent && !comparedDepth_) {
        const std::size_t depth = path_.depth();
        if (depth == 0 ? rootsParentMayHaveChanged() : recent_[depth - 1]) comparedDepth_ = depth;
    }
    if (recent || comparedDepth_) compare(folder);
}

void WatchPass::noteAppearedRoot(FolderNumber folder, bool recent) {
    if (!list_.fileName(folder).empty()) return;
    if (recent || rootsParentMayHaveChanged())
        difference_ = FolderEventFlag::isFolder | FolderEventFlag::created;
}

void WatchPass::compare(FolderNumber folder) {
    if (difference_ == 0) difference_ = comparison_.difference(list_, folder, path_.text());
}

bool WatchPass::rootsParentMayHaveChanged() {
    const std::string parent = parentOf(path_.text());
    const auto status = comparison_.status(parent, true);
    return status && mayHaveChanged(parent, *status);
}

bool WatchPass::mayHaveChanged(const std::string& path, const struct stat& status) {
    return start_.mayPrecedeChangeOf(status) || !clocks_.areOurs(status.st_dev, comparison_.reachable(path));
}

void WatchPass::abandon() {
    std::vector<WatchTable::Entry> entries = state_.table.entries();
    for (const WatchNumber watch : newWatches_) entries.push_back({watch, WatchTable::nowhere});
    state_.table.assign(std::move(entries));
    state_.untrusted.insert(state_.untrusted.end(), latestWatches_.begin(), latestWatches_.end());
    std::ranges::sort(state_.untrusted);
}

bool WatchPass::finish() {
    giveBackReserve();
    std::vector<WatchNumber> stale;
    const auto& old = state_.table.entries();
    for (std::size_t i = 0; i < old.size(); ++i) {
        const bool isFirst = i == 0 || old[i - 1].watch != old[i].watch;
        if (!isFirst || seen_[i]) continue;
        stale.push_back(old[i].watch);
        entries_.push_back({old[i].watch, WatchTable::nowhere});
    }
    state_.table.assign(std::move(entries_));
    // A walk that nobody has told of yet may be older than these.
    state_.untrusted = latestWatches_;
    state_.unwatched = std::move(unwatched_);

    // A root that was taken from the list stays watched.
    if (!coverage_.metAllRoots()) return true;
    for (const WatchNumber watch : stale) {
        inotify_.remove(watch);
        if (!pace_.keepsOn()) return false;
    }
    madeRoom_ = !stale.empty() && !state_.unwatched.empty();
    state_.table.erase(std::move(stale));
    return true;
}

/// Where the system set the limit, others need some of what was taken up to then.
void WatchPass::giveBackReserve() {
    if (watchCount_ <= state_.limit.allowed()) return;
    std::size_t surplus = watchCount_ - state_.limit.allowed();
    std::vector<WatchNumber> given;
    for (auto last = newWatches_.rbegin(); last != newWatches_.rend() && surplus > 0; ++last, --surplus) {
        inotify_.remove(*last);
        given.push_back(*last);
    }
    std::ranges::sort(given);
    std::erase_if(entries_, [this, &given](const WatchTable::Entry& entry) {
        if (!std::ranges::binary_search(given, entry.watch)) return false;
        unwatched_.push_back({entry.folder, LateComparison::unknown});
        return true;
    });
    std::ranges::sort(unwatched_, {}, &LateComparison::Entry::folder);
}

} // namespace brimwick
