#pragma once

#include "platform/linux/inotify/FolderChanges.h"
#include "platform/linux/inotify/Inotify.h"
#include "platform/linux/inotify/LateComparison.h"
#include "platform/linux/inotify/MountWatch.h"
#include "platform/linux/inotify/RootWatch.h"
#include "platform/linux/inotify/SubfolderComparison.h"
#include "platform/linux/inotify/Suspicions.h"
#include "platform/linux/inotify/WalkMailbox.h"
#include "platform/linux/inotify/WatchState.h"
#include "platform/linux/inotify/WatchingOptions.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace brimwick {

/// What the watching thread does: sets the watches after each walk, tells what happens, and after a walk
/// what the walk has missed. One thread, which may wait for the disk.
///
/// What it relies on: it looks at the disk (reads events, compares) before it looks into the mailbox. So what
/// it sees while the mailbox tells of no running walk is older than any walk that begins later, and that walk
/// finds it; what it sees while one runs is compared again when the walk has ended.
class FolderWatcher {
  public:
    struct Outlets {
        std::function<void(std::vector<std::uint32_t>)> deliver;
        std::function<void(std::string)> tellLimit;
    };

    /// The mailbox must outlive it.
    FolderWatcher(std::vector<std::string> roots, const FolderRules& rules, WatchingOptions options,
                  Inotify folders, Inotify wayToRoots, WalkMailbox& mailbox, Outlets outlets);

    /// Returns when the mailbox says stop.
    void run();

  private:
    void attend(int timeout);
    void learn(WalkMailbox::News news);
    void judge(const FolderChanges& changes, std::vector<std::uint32_t> otherFlags);
    bool carryOn();
    void followWalk();
    void compareSuspicious(const FolderList& list);
    void compareUnwatched();
    void settle();
    void deliverOne(std::uint32_t flags);
    void tellLimitOnce();
    bool mustCompareLate() const;
    int timeUntilLateComparison() const;

    std::vector<std::string> roots_;
    FolderRules rules_;
    WatchingOptions options_;
    Inotify inotify_;
    WalkMailbox& mailbox_;
    Outlets outlets_;
    SubfolderComparison comparison_;
    WatchState state_;
    RootWatch rootWatch_;
    MountWatch mountWatch_;
    LateComparison lateComparison_;
    Suspicions suspicions_;
    std::vector<InotifyEvent> batch_;

    bool stopped_ = false;
    bool walkIsRunning_ = false;
    /// A walk has ended whose findings are not followed yet.
    bool mustFollow_ = false;
    /// There were suspicions that the running walk answers, if it ends well.
    bool reliesOnWalk_ = false;
    bool toldLimit_ = false;
    bool settled_ = false;
    std::shared_ptr<const FolderList> list_;
    WalkStart listStart_;
};

} // namespace brimwick
