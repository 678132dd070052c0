#include "model/IndexRebuilder.h"

#include "model/FolderListing.h"
#include "platform/ports/ThreadPriority.h"
#include "platform/ports/VectorRegisters.h"

#include <exception>
#include <iostream>

namespace brimwick {
namespace {

constexpr std::int32_t lastChainedRecursionCount = 100;
constexpr double secondsOfOneBurst = 4.0;

/// In one piece, so that lines of several threads do not mix.
void complain(const std::exception& error) {
    std::cerr << std::string("brimwick: the folder index was not rebuilt: ") + error.what() + "\n";
}

} // namespace

IndexRebuilder::IndexRebuilder(FolderIndexer& indexer, const PreferencesStore& preferences,
                               MainLoop& mainLoop, FolderEventStream& folderEvents, IndexBuilder buildIndex)
    : indexer_(indexer), preferences_(preferences), mainLoop_(mainLoop), folderEvents_(folderEvents),
      buildIndex_(std::move(buildIndex)), lastFSEventTime_(mainLoop.now()) {}

void IndexRebuilder::rebuildIndexOnSeparateThreadWithRecursionCountForReason(BWInteger recursionCount,
                                                                             RebuildReasonCode reason) {
    needToRebuildIndexAgain_ = false;
    reasonForRebuildingIndex_ = reason;
    if (indexIsRebuilding_) return;
    if (!indexedFoldersHaveChanged_ && indexHasBeenInitialized_) return;
    indexIsRebuilding_ = true;
    announceRebuild(reason);
    startRebuildThread(recursionCount);
}

void IndexRebuilder::announceRebuild(RebuildReasonCode code) {
    const RebuildReason* reason = rebuildReason(code);
    if (reason == nullptr) {
        observer_->hideRebuildIndexProgressIndicator();
        return;
    }
    if (preferences_.boolPreferenceWithKey(reason->progressKey))
        observer_->showRebuildIndexProgressIndicator();
    if (preferences_.boolPreferenceWithKey(reason->animationKey))
        observer_->animateIconUsingMethodWithToolTip(false, preferences_.animationStyle(), reason->toolTip);
}

void IndexRebuilder::startRebuildThread(BWInteger recursionCount) {
    folderEvents_.walkBegins();
    try {
        walker_ = std::jthread([this, isFirst = !indexHasBeenInitialized_,
                                rootPaths = indexer_.indexedFolderPaths(),
                                recursionCount](const std::stop_token& stop) {
            clearWideRegisters();
            // The user waits for the first index only.
            if (!isFirst) lowerThreadPriority();
            rebuildIndexWithObject(rootPaths, recursionCount, stop);
        });
    } catch (const std::exception& error) {
        complain(error);
        handOver(nullptr, recursionCount);
    }
}

void IndexRebuilder::rebuildIndexWithObject(const std::vector<std::string>& rootPaths,
                                            BWInteger recursionCount, const std::stop_token& stop) {
    std::shared_ptr<const FolderIndex> index;
    try {
        index = buildIndex_(
            rootPaths, [this](std::string_view name) { scannedFolderName_.set(name); }, stop);
    } catch (const std::exception& error) {
        complain(error);
    }
    if (!stop.stop_requested()) handOver(std::move(index), recursionCount);
}

void IndexRebuilder::handOver(std::shared_ptr<const FolderIndex> index, BWInteger recursionCount) {
    mainLoop_.post(
        [this, presence = std::weak_ptr(presence_), index = std::move(index), recursionCount]() mutable {
            if (presence.expired()) return;
            if (index)
                finishRebuild(std::move(index), recursionCount);
            else
                giveUpRebuild();
        });
}

void IndexRebuilder::finishRebuild(std::shared_ptr<const FolderIndex> index, BWInteger recursionCount) {
    indexedFoldersHaveChanged_ = false;
    indexIsLocked_ = true;
    folderEvents_.walkEnded(index);
    indexer_.setIndex(std::move(index));
    if (observer_->pickerWindowIsVisible())
        observer_->search();
    else
        observer_->forgetSearchResults();
    indexIsLocked_ = false;
    observer_->hideRebuildIndexProgressIndicator();
    indexIsRebuilding_ = false;
    indexHasBeenInitialized_ = true;
    reportEndOfRebuild();
    if (needToRebuildIndexAgain_ && recursionCount.intValue() < lastChainedRecursionCount) {
        indexedFoldersHaveChanged_ = true;
        rebuildIndexOnSeparateThreadWithRecursionCountForReason(recursionCount.increment(),
                                                                reasonForRebuildingIndex_);
    }
    if (!observer_->actionsEnabled()) observer_->enableActions();
    // The search above came too early for them.
    if (observer_->pickerWindowIsVisible()) observer_->enableDisableWickWindowControls();
}

void IndexRebuilder::reportEndOfRebuild() {
    const RebuildReasonCode code = reasonForRebuildingIndex_;
    const RebuildReason* reason = rebuildReason(code);
    observer_->sendUserNotification(rebuildCompletionMessage(code));
    if (reason != nullptr && preferences_.boolPreferenceWithKey(reason->soundKey)) observer_->playDingSound();
    // Another reason may have taken the place of the first index's; the picker must open all the same.
    if (code == rebuildReasonFirstIndex || !observer_->actionsEnabled()) observer_->enableWickWindow();
}

/// The old index stays, and so do the changes that asked for a new one: the next request walks again.
/// Meanwhile nobody is locked out.
void IndexRebuilder::giveUpRebuild() {
    folderEvents_.walkEnded(nullptr);
    observer_->hideRebuildIndexProgressIndicator();
    indexIsRebuilding_ = false;
    if (observer_->actionsEnabled()) return;
    observer_->enableWickWindow();
    observer_->enableActions();
}

void IndexRebuilder::initializeEventStream() {
    if (indexer_.indexedFolders().empty()) return;
    const std::weak_ptr presence = presence_;
    FolderEventStream::Handlers handlers;
    handlers.eventsArrived = [this, presence](const std::vector<std::uint32_t>& flags) {
        if (!presence.expired()) folderEventsArrived(flags);
    };
    handlers.watchingIsLimited = [this, presence](const std::string& why) {
        if (!presence.expired()) observer_->sendUserNotification(why);
    };
    fileSystemEventMonitoringEnabled_ = true;
    folderEvents_.start(indexer_.indexedFolderPaths(), {isIndexedName, appendSubfolderNames},
                        std::move(handlers));
}

double IndexRebuilder::pushFSEventTime(Time time) {
    nextToLastFSEventTime_ = lastFSEventTime_;
    lastFSEventTime_ = time;
    return std::chrono::duration<double>(lastFSEventTime_ - nextToLastFSEventTime_).count();
}

void IndexRebuilder::folderEventsArrived(const std::vector<std::uint32_t>& flags) {
    const double secondsSincePreviousDelivery = pushFSEventTime(mainLoop_.now());
    for (const std::uint32_t eventFlags : flags) {
        if ((eventFlags & FolderEventFlag::isFolder) == 0) continue;
        observer_->sendUserNotification("Index will be rebuilt because an indexed folder changed.");
        if (!indexIsRebuilding_) {
            indexedFoldersHaveChanged_ = true;
            rebuildIndexOnSeparateThreadWithRecursionCountForReason(BWInteger::initWithInt(0),
                                                                    rebuildReasonSubfolderChanged);
        } else if (secondsSincePreviousDelivery > secondsOfOneBurst) {
            needToRebuildIndexAgain_ = true;
        }
    }
}

} // namespace brimwick
