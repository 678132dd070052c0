#pragma once

#include "fakes/FakeMainLoop.h"
#include "fakes/TemporaryFolder.h"
#include "model/IndexRebuilder.h"
#include "platform/linux/inotify/InotifyFolderEventStream.h"

#include <algorithm>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace brimwick {

/// What the user would see of a rebuild; here nobody looks.
class NoObserver : public RebuildObserver {
  public:
    void showRebuildIndexProgressIndicator() override {}
    void hideRebuildIndexProgressIndicator() override {}
    void animateIconUsingMethodWithToolTip(bool /*example*/, std::int64_t /*method*/,
                                           const std::string& /*toolTip*/) override {}
    void sendUserNotification(const std::string& /*text*/) override { ++notifications; }
    void playDingSound() override {}
    bool pickerWindowIsVisible() const override { return false; }
    void search() override {}
    void forgetSearchResults() override {}
    void enableWickWindow() override {}
    void enableDisableWickWindowControls() override {}
    bool actionsEnabled() const override { return enabled_; }
    void enableActions() override { enabled_ = true; }

    std::size_t notifications = 0;

  private:
    bool enabled_ = false;
};

/// The index of real folders, kept true by the real event stream on a main loop that the test runs.
class IndexedFolders {
  public:
    explicit IndexedFolders(std::vector<std::string> roots,
                            IndexRebuilder::IndexBuilder buildIndex = indexOfFolders)
        : roots_(std::move(roots)), stream_(mainLoop_, options()),
          rebuilder_(indexer_, preferences_, mainLoop_, stream_, std::move(buildIndex)) {
        rebuilder_.setObserver(observer_);
        for (const std::string& root : roots_)
            indexer_.indexedFolders().push_back(BWSelectedFileOrFolder::fileOrFolderWithPath(root));
        rebuilder_.rebuildIndexOnSeparateThreadWithRecursionCountForReason(BWInteger(),
                                                                           rebuildReasonFirstIndex);
        rebuilder_.initializeEventStream();
    }

    /// Runs one task if one waits.
    bool runTask() {
        mainLoop_.time = std::chrono::system_clock::now();
        return mainLoop_.hasTasks() && mainLoop_.runNext();
    }
    /// Runs the main loop until the index is what a walk finds now; false when it does not become so though
    /// nothing has happened for ten seconds.
    bool becomesTrue() {
        for (;;) {
            if (!mainLoop_.hasTasks() && !rebuilder_.indexIsRebuilding() && isTrue()) return true;
            mainLoop_.time = std::chrono::system_clock::now();
            if (!mainLoop_.runNext()) return false;
        }
    }
    bool isTrue() const {
        return paths(*index()) == paths(*indexOfFolders(roots_, [](auto) {}, {}));
    }
    const std::shared_ptr<const FolderIndex>& index() const { return indexer_.index(); }
    /// Waits until so many folders are watched; false when it does not become so in ten seconds.
    bool areWatched(std::size_t count) {
        std::unique_lock lock(mutex_);
        return settled_.wait_for(lock, std::chrono::seconds(10), [&] { return watched_ == count; });
    }
    const NoObserver& observer() const { return observer_; }

  private:
    WatchingOptions options() {
        WatchingOptions options;
        options.settled = [this](const WatchingOptions::Figures& figures) {
            {
                const std::lock_guard lock(mutex_);
                watched_ = figures.watched;
            }
            settled_.notify_all();
        };
        return options;
    }
    static std::vector<std::string> paths(const FolderIndex& index) {
        std::vector<std::string> paths;
        for (FolderNumber folder = 0; folder < index.size(); ++folder)
            paths.push_back(index.displayName(folder).empty() ? "" : index.path(folder));
        std::ranges::sort(paths);
        return paths;
    }

    std::vector<std::string> roots_;
    TemporaryFolder support_;
    FolderIndexer indexer_;
    PreferencesStore preferences_{support_.path(), Resources(support_.path()), indexer_.indexedFolders()};
    FakeMainLoop mainLoop_;
    NoObserver observer_;
    std::mutex mutex_;
    std::condition_variable settled_;
    std::size_t watched_ = 0;
    InotifyFolderEventStream stream_;
    IndexRebuilder rebuilder_;
};

} // namespace brimwick
