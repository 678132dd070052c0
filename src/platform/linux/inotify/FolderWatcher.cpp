#include "platform/linux/inotify/FolderWatcher.h"

#include "platform/linux/inotify/WatchPass.h"
#include "platform/linux/inotify/WatchingTexts.h"
#include "platform/ports/FolderEventStream.h"

#include <poll.h>

#include <algorithm>
#include <array>
#include <limits>

namespace brimwick {

FolderWatcher::FolderWatcher(std::vector<std::string> roots, const FolderRules& rules,
                             WatchingOptions options, Inotify folders, Inotify wayToRoots,
                             WalkMailbox& mailbox, Outlets outlets)
    : roots_(std::move(roots)), rules_(rules), options_(std::move(options)), inotify_(std::move(folders)),
      mailbox_(mailbox), outlets_(std::move(outlets)), comparison_(rules),
      state_(WatchLimit(options_.watchLimit)), rootWatch_(roots_, std::move(wayToRoots)), mountWatch_(rules),
      lateComparison_(options_.slowInterval) {
    mountWatch_.changes(rootWatch_.paths());
}

void FolderWatcher::run() {
    learn(mailbox_.take());
    while (!stopped_) {
        if (!walkIsRunning_ && mustFollow_)
            followWalk();
        else if (!walkIsRunning_ && timeUntilLateComparison() == 0)
            compareUnwatched();
        else
            settle();
    }
}

void FolderWatcher::attend(int timeout) {
    std::array<pollfd, 4> sources = {
        pollfd{mailbox_.descriptor(), POLLIN, 0}, pollfd{inotify_.descriptor(), POLLIN, 0},
        pollfd{rootWatch_.descriptor(), POLLIN, 0}, pollfd{mountWatch_.descriptor(), POLLPRI, 0}};
    poll(sources.data(), sources.size(), timeout);
    if (options_.beforeReading) options_.beforeReading();
    inotify_.read(batch_);
    FolderChanges changes = folderChanges(batch_, rules_);
    std::vector<std::uint32_t> flags;
    if (rootWatch_.wasTouched() || changes.rootTouched) flags = rootWatch_.changes();
    if (sources[3].revents != 0 || changes.unmounted) {
        // A mount may be one that a root lies on; look at these again, too.
        std::ranges::copy(mountWatch_.changes(rootWatch_.paths()), std::back_inserter(flags));
        const auto rootChanges = rootWatch_.changes();
        if (flags.empty()) flags = rootChanges;
    }
    learn(mailbox_.take());
    if (stopped_) return;
    state_.ended.insert(state_.ended.end(), changes.ended.begin(), changes.ended.end());
    judge(changes, std::move(flags));
}

void FolderWatcher::learn(WalkMailbox::News news) {
    stopped_ = news.stopped;
    walkIsRunning_ = news.running;
    if (news.begun) {
        reliesOnWalk_ = reliesOnWalk_ || !suspicions_.isEmpty();
        suspicions_.clear();
    }
    if (news.found) {
        list_ = std::move(news.found);
        listStart_ = news.foundFrom;
        mustFollow_ = true;
        settled_ = false;
    }
    if (walkIsRunning_) return;
    const bool missed = news.gaveUp && (reliesOnWalk_ || !suspicions_.isEmpty());
    reliesOnWalk_ = false;
    const bool everything = suspicions_.concernsEverything();
    if (missed || everything) deliverOne(FolderEventFlag::isFolder);
    if (news.gaveUp || everything) suspicions_.clear();
}

void FolderWatcher::judge(const FolderChanges& changes, std::vector<std::uint32_t> otherFlags) {
    std::vector<std::uint32_t> flags = changes.flags;
    flags.insert(flags.end(), otherFlags.begin(), otherFlags.end());
    if (walkIsRunning_) {
        suspicions_.add(changes.places);
        if (changes.overflowed || !otherFlags.empty()) suspicions_.addEverything();
    }
    if (!flags.empty()) outlets_.deliver(std::move(flags));
}

/// Sees to what happened meanwhile; whether the work that is under way for the last walk still makes sense.
bool FolderWatcher::carryOn() {
    attend(0);
    return !stopped_ && !walkIsRunning_ && !mustFollow_;
}

void FolderWatcher::followWalk() {
    // Another walk may put another list in its place meanwhile.
    const auto list = list_;
    const WalkStart start = listStart_;
    mustFollow_ = false;
    for (bool again = true; again;) {
        WatchPass pass(*list, start, roots_, rules_, inotify_, comparison_, state_,
                       [this] { return carryOn(); });
        if (!pass.run()) {
            mustFollow_ = true;
            // The walk that runs now finds it, or gives up.
            reliesOnWalk_ = reliesOnWalk_ || (walkIsRunning_ && pass.difference() != 0);
            return;
        }
        if (pass.difference() != 0) {
            suspicions_.clear();
            deliverOne(pass.difference());
        }
        again = pass.madeRoom() && carryOn();
    }
    lateComparison_.postpone();
    tellLimitOnce();
    compareSuspicious(*list);
}

void FolderWatcher::compareSuspicious(const FolderList& list) {
    if (suspicions_.isEmpty() || walkIsRunning_) return;
    Pace pace([this] { return carryOn(); });
    const std::uint32_t difference = suspicions_.difference(list, state_.table, comparison_, pace);
    // A walk that began meanwhile has cleared them, and more have been gathered since.
    if (!walkIsRunning_ && !mustFollow_) suspicions_.clear();
    if (difference != 0) deliverOne(difference);
}

void FolderWatcher::compareUnwatched() {
    std::uint32_t difference = 0;
    const std::vector<std::uint32_t> rootChanges =
        rootWatch_.isBlind() ? rootWatch_.changes() : std::vector<std::uint32_t>();
    if (!rootChanges.empty()) difference = rootChanges.front();
    if (const auto list = list_; list && difference == 0) {
        Pace pace([this] { return carryOn(); });
        difference = lateComparison_.pass(*list, state_.unwatched, comparison_, pace);
    } else {
        lateComparison_.postpone();
    }
    if (difference != 0) deliverOne(difference);
}

/// Waits for something to do.
void FolderWatcher::settle() {
    if (!settled_ && list_ && !walkIsRunning_) {
        if (!carryOn()) return;
        settled_ = true;
        if (options_.settled) options_.settled({state_.table.watchCount(), state_.unwatched.size()});
    }
    attend(timeUntilLateComparison());
}

void FolderWatcher::deliverOne(std::uint32_t flags) {
    outlets_.deliver({flags});
}

void FolderWatcher::tellLimitOnce() {
    if (toldLimit_ || (state_.unwatched.empty() && !rootWatch_.lacksRoom())) return;
    toldLimit_ = true;
    const int error = inotify_.error() != 0 ? inotify_.error() : rootWatch_.error();
    // Where all folders found room, the ways to the roots did not.
    const std::size_t late = state_.unwatched.empty() ? roots_.size() : state_.unwatched.size();
    outlets_.tellLimit(error != 0 ? watchingIsUnavailable(error)
                                  : watchLimitReached(late, state_.table.watchCount() + late));
}

bool FolderWatcher::mustCompareLate() const {
    return !state_.unwatched.empty() || rootWatch_.isBlind();
}

/// In milliseconds; -1 when there is nothing to compare.
int FolderWatcher::timeUntilLateComparison() const {
    if (walkIsRunning_ || mustFollow_ || !list_ || !mustCompareLate()) return -1;
    const auto wait =
        std::chrono::ceil<std::chrono::milliseconds>(lateComparison_.due() - LateComparison::Clock::now());
    return static_cast<int>(std::clamp<long long>(wait.count(), 0, std::numeric_limits<int>::max()));
}

} // namespace brimwick
