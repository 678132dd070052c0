#pragma once

#include "model/BWInteger.h"
#include "model/FolderIndexer.h"
#include "model/PreferencesStore.h"
#include "model/RebuildObserver.h"
#include "model/RebuildReason.h"
#include "model/ScannedFolderName.h"
#include "platform/ports/FolderEventStream.h"
#include "platform/ports/MainLoop.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <thread>
#include <vector>

namespace brimwick {

/// Decides when the folder index is rebuilt, has it rebuilt on a thread of its own and publishes the result.
/// Main thread only: the walking thread gets a copy of the root paths and hands a finished index over through
/// the main loop. Destroying it stops a running walk and waits for its thread.
class IndexRebuilder {
  public:
    using Time = std::chrono::system_clock::time_point;
    /// What runs on the walking thread; as indexOfFolders().
    using IndexBuilder = std::function<std::shared_ptr<const FolderIndex>(
        const std::vector<std::string>&, const FolderNameObserver&, const std::stop_token&)>;

    /// All references must outlive the rebuilder.
    IndexRebuilder(FolderIndexer& indexer, const PreferencesStore& preferences, MainLoop& mainLoop,
                   FolderEventStream& folderEvents, IndexBuilder buildIndex = indexOfFolders);
    /// To be called before the first request. The observer must outlive the last rebuild.
    void setObserver(RebuildObserver& observer) { observer_ = &observer; }
    IndexRebuilder(const IndexRebuilder&) = delete;
    IndexRebuilder& operator=(const IndexRebuilder&) = delete;

    /// Requests a rebuild and returns at once. Callers pass a count of 0; a rebuild that follows directly
    /// from another passes more. During a rebuild the request only changes the reason that its end is
    /// reported with, and revokes a further rebuild; when nothing changed since the last one it does nothing.
    void rebuildIndexOnSeparateThreadWithRecursionCountForReason(BWInteger recursionCount,
                                                                 RebuildReasonCode reason);

    /// To be called once: starts to watch the indexed folders, for good. Without any there is nothing to
    /// watch; folders that are added to the list later are not watched.
    void initializeEventStream();
    /// One delivery of file-system events: the flags of each event. Those of a folder (0x20000) ask for a
    /// rebuild.
    void folderEventsArrived(const std::vector<std::uint32_t>& flags);
    /// Notes the time of a delivery and yields the seconds since the one before.
    double pushFSEventTime(Time time);

    bool indexHasBeenInitialized() const { return indexHasBeenInitialized_; }
    bool indexIsRebuilding() const { return indexIsRebuilding_; }
    bool indexIsLocked() const { return indexIsLocked_; }
    bool indexedFoldersHaveChanged() const { return indexedFoldersHaveChanged_; }
    void setIndexedFoldersHaveChanged(bool changed) { indexedFoldersHaveChanged_ = changed; }
    bool needToRebuildIndexAgain() const { return needToRebuildIndexAgain_; }
    void setNeedToRebuildIndexAgain(bool needed) { needToRebuildIndexAgain_ = needed; }
    RebuildReasonCode reasonForRebuildingIndex() const { return reasonForRebuildingIndex_; }
    bool fileSystemEventMonitoringEnabled() const { return fileSystemEventMonitoringEnabled_; }
    Time lastFSEventTime() const { return lastFSEventTime_; }
    Time nextToLastFSEventTime() const { return nextToLastFSEventTime_; }
    /// Where the walk is; may be asked from any thread.
    const ScannedFolderName& scannedFolderName() const { return scannedFolderName_; }

  private:
    void announceRebuild(RebuildReasonCode reason);
    void startRebuildThread(BWInteger recursionCount);
    void rebuildIndexWithObject(const std::vector<std::string>& rootPaths, BWInteger recursionCount,
                                const std::stop_token& stop);
    void handOver(std::shared_ptr<const FolderIndex> index, BWInteger recursionCount);
    void finishRebuild(std::shared_ptr<const FolderIndex> index, BWInteger recursionCount);
    void reportEndOfRebuild();
    void giveUpRebuild();

    FolderIndexer& indexer_;
    const PreferencesStore& preferences_;
    MainLoop& mainLoop_;
    FolderEventStream& folderEvents_;
    RebuildObserver* observer_ = nullptr;
    IndexBuilder buildIndex_;

    bool indexHasBeenInitialized_ = false;
    bool indexIsRebuilding_ = false;
    bool indexIsLocked_ = false;
    bool indexedFoldersHaveChanged_ = false;
    bool needToRebuildIndexAgain_ = false;
    RebuildReasonCode reasonForRebuildingIndex_ = rebuildReasonFirstIndex;
    bool fileSystemEventMonitoringEnabled_ = false;
    Time lastFSEventTime_;
    Time nextToLastFSEventTime_;

    ScannedFolderName scannedFolderName_;
    /// Tells a task that still waits in the main loop that the rebuilder is gone.
    std::shared_ptr<const bool> presence_ = std::make_shared<const bool>(true);
    /// Last, so that it has ended before anything that it uses goes.
    std::jthread walker_;
};

} // namespace brimwick
