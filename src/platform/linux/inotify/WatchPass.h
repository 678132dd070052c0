#pragma once

#include "platform/linux/inotify/FileSystemClocks.h"
#include "platform/linux/inotify/FolderPath.h"
#include "platform/linux/inotify/Inotify.h"
#include "platform/linux/inotify/Pace.h"
#include "platform/linux/inotify/RootCoverage.h"
#include "platform/linux/inotify/SubfolderComparison.h"
#include "platform/linux/inotify/WalkStart.h"
#include "platform/linux/inotify/WatchState.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace brimwick {

/// Sets the watches right after a walk: one on every folder that it found below the roots. A folder that was
/// not watched all the time since the walk began is compared with what the walk found in it, when its times
/// allow for a change; so nothing is missed between the walk and the watch. One thread, one run.
class WatchPass {
  public:
    /// All but `carryOn` must outlive the pass. `carryOn` is called every few milliseconds; false abandons
    /// the pass, and what it has done so far still counts for the next one.
    WatchPass(const FolderList& list, const WalkStart& start, const std::vector<std::string>& roots,
              const FolderRules& rules, const Inotify& inotify, SubfolderComparison& comparison,
              WatchState& state, std::function<bool()> carryOn);

    /// False when it was abandoned.
    bool run();
    /// The flags of one event when a folder differs from what the walk found; 0 otherwise.
    std::uint32_t difference() const { return difference_; }
    /// There is room now for folders that could not be watched: another pass would watch them.
    bool madeRoom() const { return madeRoom_; }

  private:
    enum class Watching { SinceBefore, Newly, NoRoom, Unreachable };

    void visit(FolderNumber folder);
    Watching watch(FolderNumber folder);
    Watching remember(WatchNumber watch, FolderNumber folder);
    void verify(FolderNumber folder, const struct stat& status);
    void noteAppearedRoot(FolderNumber folder, bool recent);
    void compare(FolderNumber folder);
    bool rootsParentMayHaveChanged();
    bool mayHaveChanged(const std::string& path, const struct stat& status);
    bool allOlderWatchesSeen() const { return seenCount_ == state_.table.watchCount(); }
    void abandon();
    bool finish();
    void giveBackReserve();

    const FolderList& list_;
    const WalkStart& start_;
    const Inotify& inotify_;
    SubfolderComparison& comparison_;
    WatchState& state_;
    Pace pace_;
    FileSystemClocks clocks_;

    FolderPath path_;
    RootCoverage coverage_;
    std::vector<WatchTable::Entry> entries_;
    /// Entries of the old table whose folders were met again; the first of a watch counts.
    std::vector<bool> seen_;
    std::size_t seenCount_ = 0;
    std::size_t watchCount_;
    std::vector<WatchNumber> newWatches_;
    /// Those made since it was known last that no other walk had begun.
    std::vector<WatchNumber> latestWatches_;
    std::vector<LateComparison::Entry> unwatched_;
    /// For the folder at hand and those above: newly watched, and possibly changed since the walk began.
    std::vector<bool> recent_;
    /// Everything below a folder of this depth is to be compared: it may have come there by a rename.
    std::optional<std::size_t> comparedDepth_;
    std::uint32_t difference_ = 0;
    bool madeRoom_ = false;
};

} // namespace brimwick
