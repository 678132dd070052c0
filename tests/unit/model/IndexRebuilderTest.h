#pragma once

#include "fakes/FakeFolderEventStream.h"
#include "fakes/FakeMainLoop.h"
#include "fakes/TemporaryFolder.h"
#include "model/IndexRebuilder.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace brimwick {

/// Keeps what it was asked to do, in order.
class RecordingObserver : public RebuildObserver {
  public:
    void showRebuildIndexProgressIndicator() override { calls.emplace_back("progress shown"); }
    void hideRebuildIndexProgressIndicator() override { calls.emplace_back("progress hidden"); }
    void animateIconUsingMethodWithToolTip(bool example, std::int64_t method,
                                           const std::string& toolTip) override {
        calls.push_back("animated " + std::to_string(example) + " " + std::to_string(method) + ": " +
                        toolTip);
    }
    void sendUserNotification(const std::string& text) override { calls.push_back("told: " + text); }
    void playDingSound() override { calls.emplace_back("ding"); }
    bool pickerWindowIsVisible() const override { return pickerVisible; }
    void search() override {
        calls.emplace_back("searched");
        if (onSearch) onSearch();
    }
    void forgetSearchResults() override { ++timesResultsWereForgotten; }
    void enableWickWindow() override { calls.emplace_back("picker enabled"); }
    void enableDisableWickWindowControls() override {
        calls.emplace_back("controls follow");
        if (onControlsFollow) onControlsFollow();
    }
    bool actionsEnabled() const override { return enabled; }
    void enableActions() override {
        calls.emplace_back("actions enabled");
        enabled = true;
    }

    bool pickerVisible = false;
    bool enabled = true;
    int timesResultsWereForgotten = 0;
    std::function<void()> onSearch;
    std::function<void()> onControlsFollow;
    std::vector<std::string> calls;
};

/// Preferences are all off; a "walk" lasts from the request until the main loop ran the next task.
class IndexRebuilderTest : public testing::Test {
  protected:
    IndexRebuilderTest() {
        rebuilder_.emplace(indexer_, preferences_, mainLoop_, folderEvents_);
        rebuilder_->setObserver(observer_);
    }

    void useBuilder(IndexRebuilder::IndexBuilder builder) {
        rebuilder_.emplace(indexer_, preferences_, mainLoop_, folderEvents_, std::move(builder));
        rebuilder_->setObserver(observer_);
    }
    void setPreference(const char* key) { preferences_.preferences().set(key, {true}); }
    void addRoot(const std::string& path) {
        indexer_.indexedFolders().push_back(BWSelectedFileOrFolder::fileOrFolderWithPath(path));
    }
    void request(RebuildReasonCode reason, std::int32_t count = 0) {
        rebuilder_->rebuildIndexOnSeparateThreadWithRecursionCountForReason(BWInteger::initWithInt(count),
                                                                            reason);
    }
    void endWalk() {
        ASSERT_TRUE(mainLoop_.runNext());
        EXPECT_FALSE(mainLoop_.hasTasks() && !rebuilder_->indexIsRebuilding());
    }
    void buildFirstIndex() {
        request(0);
        endWalk();
        observer_.calls.clear();
    }
    /// A delivery so many seconds after the one before.
    void deliver(double seconds, const std::vector<std::uint32_t>& flags) {
        mainLoop_.time += std::chrono::duration_cast<IndexRebuilder::Time::duration>(
            std::chrono::duration<double>(seconds));
        rebuilder_->folderEventsArrived(flags);
    }
    /// A folder changes, long enough after the last change for a walk that runs to be too old for it.
    void changeMuchLater() { deliver(5, {FolderEventFlag::isFolder}); }

    TemporaryFolder folder_;
    FolderIndexer indexer_;
    PreferencesStore preferences_{folder_ / "support", Resources(folder_.path()), indexer_.indexedFolders()};
    FakeFolderEventStream folderEvents_;
    FakeMainLoop mainLoop_;
    RecordingObserver observer_;
    std::optional<IndexRebuilder> rebuilder_;
};

} // namespace brimwick
