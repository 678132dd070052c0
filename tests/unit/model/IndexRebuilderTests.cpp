#include <gmock/gmock.h>

#include <atomic>

#include "unit/model/IndexRebuilderTest.h"

namespace brimwick {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

constexpr std::uint32_t folderEvent = 0x20000;
constexpr std::uint32_t fileEvent = 0x10000 | 0x100;
constexpr const char* initialized = "told: Index initialization complete.";
constexpr const char* rebuilt = "told: Index rebuilding complete.";
constexpr const char* willBeRebuilt = "told: Index will be rebuilt because an indexed folder changed.";

} // namespace

TEST_F(IndexRebuilderTest, StartsWithNothingKnownAndNothingRunning) {
    EXPECT_FALSE(rebuilder_->indexHasBeenInitialized());
    EXPECT_FALSE(rebuilder_->indexIsRebuilding());
    EXPECT_FALSE(rebuilder_->indexIsLocked());
    EXPECT_FALSE(rebuilder_->indexedFoldersHaveChanged());
    EXPECT_FALSE(rebuilder_->needToRebuildIndexAgain());
    EXPECT_FALSE(rebuilder_->fileSystemEventMonitoringEnabled());
    EXPECT_EQ(rebuilder_->lastFSEventTime(), mainLoop_.now());
    EXPECT_EQ(indexer_.index()->size(), 0U);
}

TEST_F(IndexRebuilderTest, BuildsAnEmptyFirstIndexWhenNoFolderIsIndexed) {
    observer_.enabled = false;
    request(0);
    EXPECT_TRUE(rebuilder_->indexIsRebuilding());
    EXPECT_THAT(observer_.calls, IsEmpty());
    endWalk();
    EXPECT_THAT(observer_.calls,
                ElementsAre("progress hidden", initialized, "picker enabled", "actions enabled"));
    EXPECT_EQ(indexer_.index()->size(), 0U);
    EXPECT_TRUE(rebuilder_->indexHasBeenInitialized());
    EXPECT_FALSE(rebuilder_->indexIsRebuilding());
    rebuilder_->initializeEventStream();
    EXPECT_FALSE(rebuilder_->fileSystemEventMonitoringEnabled());
}

TEST_F(IndexRebuilderTest, PublishesTheFoldersOfEveryRootInOrder) {
    folder_.makeFolder("one/inside");
    folder_.makeFolder("two");
    addRoot(folder_ / "two");
    addRoot(folder_ / "one");
    request(0);
    EXPECT_EQ(indexer_.index()->size(), 0U);
    endWalk();
    ASSERT_EQ(indexer_.index()->size(), 3U);
    EXPECT_EQ(indexer_.index()->path(0), folder_ / "two");
    EXPECT_EQ(indexer_.index()->path(1), folder_ / "one");
    EXPECT_EQ(indexer_.index()->path(2), folder_ / "one/inside");
    EXPECT_EQ(rebuilder_->scannedFolderName().get(), "inside");
}

TEST_F(IndexRebuilderTest, DoesNotSeeRootsThatAreAddedDuringAWalk) {
    folder_.makeFolder("one");
    addRoot(folder_ / "one");
    request(0);
    addRoot(folder_ / "two");
    endWalk();
    EXPECT_EQ(indexer_.index()->size(), 1U);
}

TEST_F(IndexRebuilderTest, ShowsWhatThePreferencesOfTheReasonAskFor) {
    preferences_.preferences() = PreferencesStore::defaultPreferencesDictionary();
    preferences_.preferences().set("NotificationAnimationStyle", {std::int64_t{1}});
    request(0);
    EXPECT_THAT(observer_.calls,
                ElementsAre("progress shown", "animated 0 1: Brimwick - Initializing Index"));
    observer_.calls.clear();
    endWalk();
    EXPECT_THAT(observer_.calls, ElementsAre("progress hidden", initialized, "ding", "picker enabled"));

    observer_.calls.clear();
    rebuilder_->setIndexedFoldersHaveChanged(true);
    request(1);
    EXPECT_THAT(observer_.calls,
                ElementsAre("progress shown",
                            "animated 0 1: Brimwick - Rebuilding Index Because an Indexed Folder Changed"));
    observer_.calls.clear();
    endWalk();
    EXPECT_THAT(observer_.calls, ElementsAre("progress hidden", rebuilt, "ding"));

    observer_.calls.clear();
    rebuilder_->setIndexedFoldersHaveChanged(true);
    request(2);
    EXPECT_THAT(
        observer_.calls,
        ElementsAre(
            "animated 0 1: Brimwick - Rebuilding Index Because a Subfolder of an Indexed Folder Changed"));
    observer_.calls.clear();
    endWalk();
    EXPECT_THAT(observer_.calls, ElementsAre("progress hidden", rebuilt));
}

TEST_F(IndexRebuilderTest, DingsAfterASubfolderChangedWhenAskedTo) {
    setPreference("NotificationSoundOnRebuildIndexForSubfolder");
    buildFirstIndex();
    rebuilder_->setIndexedFoldersHaveChanged(true);
    request(2);
    endWalk();
    EXPECT_THAT(observer_.calls, ElementsAre("progress hidden", rebuilt, "ding"));
}

TEST_F(IndexRebuilderTest, HidesTheProgressForAnUnknownReason) {
    preferences_.preferences() = PreferencesStore::defaultPreferencesDictionary();
    request(7);
    EXPECT_THAT(observer_.calls, ElementsAre("progress hidden"));
    endWalk();
    EXPECT_THAT(observer_.calls, ElementsAre("progress hidden", "progress hidden", rebuilt));
}

TEST_F(IndexRebuilderTest, HasResultsForgottenThatNobodySees) {
    observer_.pickerVisible = true;
    buildFirstIndex();
    EXPECT_EQ(observer_.timesResultsWereForgotten, 0);
    observer_.pickerVisible = false;
    rebuilder_->setIndexedFoldersHaveChanged(true);
    request(rebuildReasonPreferencesChanged);
    endWalk();
    EXPECT_EQ(observer_.timesResultsWereForgotten, 1);
}

TEST_F(IndexRebuilderTest, SearchesAgainBeforeItHidesTheProgressWhenThePickerIsVisible) {
    observer_.pickerVisible = true;
    observer_.onSearch = [this] {
        EXPECT_TRUE(rebuilder_->indexIsLocked());
        EXPECT_TRUE(rebuilder_->indexIsRebuilding());
        EXPECT_EQ(indexer_.index()->size(), 1U);
    };
    addRoot(folder_.path());
    request(0);
    endWalk();
    EXPECT_THAT(observer_.calls,
                ElementsAre("searched", "progress hidden", initialized, "picker enabled", "controls follow"));
    EXPECT_FALSE(rebuilder_->indexIsLocked());
}

TEST_F(IndexRebuilderTest, HasTheControlsFollowOnceTheRebuildIsOver) {
    observer_.pickerVisible = true;
    bool wasRebuilding = true;
    observer_.onControlsFollow = [&] { wasRebuilding = rebuilder_->indexIsRebuilding(); };
    buildFirstIndex();
    EXPECT_FALSE(wasRebuilding);
}

TEST_F(IndexRebuilderTest, OnlyTakesTheReasonOfARequestThatComesDuringAWalk) {
    request(0);
    request(1);
    EXPECT_EQ(rebuilder_->reasonForRebuildingIndex(), 1);
    observer_.enabled = true;
    endWalk();
    EXPECT_THAT(observer_.calls, ElementsAre("progress hidden", rebuilt));
    EXPECT_FALSE(rebuilder_->indexIsRebuilding());
    EXPECT_THAT(folderEvents_.calls, ElementsAre("walk begins", "walk ended"));
}

TEST_F(IndexRebuilderTest, EnablesThePickerThoughAnotherReasonTookThePlaceOfTheFirst) {
    observer_.enabled = false;
    request(0);
    request(1);
    endWalk();
    EXPECT_THAT(observer_.calls,
                ElementsAre("progress hidden", rebuilt, "picker enabled", "actions enabled"));
}

TEST_F(IndexRebuilderTest, DoesNothingWhenNothingChangedSinceTheLastWalk) {
    buildFirstIndex();
    request(1);
    EXPECT_FALSE(rebuilder_->indexIsRebuilding());
    EXPECT_EQ(rebuilder_->reasonForRebuildingIndex(), 1);
    EXPECT_THAT(observer_.calls, IsEmpty());
    EXPECT_FALSE(mainLoop_.hasTasks());
}

TEST_F(IndexRebuilderTest, RebuildsWhenTheIndexedFoldersChanged) {
    buildFirstIndex();
    addRoot(folder_.path());
    rebuilder_->setIndexedFoldersHaveChanged(true);
    request(1);
    endWalk();
    EXPECT_EQ(indexer_.index()->size(), 1U);
    EXPECT_FALSE(rebuilder_->indexedFoldersHaveChanged());
}

TEST_F(IndexRebuilderTest, ARequestDuringAWalkRevokesTheNextOne) {
    request(0);
    changeMuchLater();
    EXPECT_TRUE(rebuilder_->needToRebuildIndexAgain());
    request(1);
    endWalk();
    EXPECT_FALSE(rebuilder_->indexIsRebuilding());
    EXPECT_THAT(folderEvents_.calls, ElementsAre("walk begins", "walk ended"));
}

TEST_F(IndexRebuilderTest, WalksAgainWhenMoreChangedDuringTheWalk) {
    request(0);
    changeMuchLater();
    endWalk();
    EXPECT_TRUE(rebuilder_->indexIsRebuilding());
    EXPECT_FALSE(rebuilder_->needToRebuildIndexAgain());
    endWalk();
    EXPECT_FALSE(rebuilder_->indexIsRebuilding());
    EXPECT_THAT(observer_.calls, ElementsAre(willBeRebuilt, "progress hidden", initialized, "picker enabled",
                                             "progress hidden", initialized, "picker enabled"));
    EXPECT_THAT(folderEvents_.calls, ElementsAre("walk begins", "walk ended", "walk begins", "walk ended"));
}

TEST_F(IndexRebuilderTest, AChainOfWalksEndsAfterOneHundredAndOne) {
    request(2);
    int walks = 0;
    while (rebuilder_->indexIsRebuilding() && walks < 200) {
        changeMuchLater();
        endWalk();
        ++walks;
    }
    EXPECT_EQ(walks, 101);
    EXPECT_TRUE(rebuilder_->needToRebuildIndexAgain());
}

TEST_F(IndexRebuilderTest, AWalkWithTheCountOneHundredIsTheLastOfItsChain) {
    request(2, 99);
    changeMuchLater();
    endWalk();
    EXPECT_TRUE(rebuilder_->indexIsRebuilding());
    changeMuchLater();
    endWalk();
    EXPECT_FALSE(rebuilder_->indexIsRebuilding());
}

TEST_F(IndexRebuilderTest, ADeliveryWhileIdleStartsOneRebuildAndTellsEveryFolderEvent) {
    buildFirstIndex();
    deliver(1, {folderEvent | 0x100, folderEvent | 0x200, folderEvent | 0x800});
    EXPECT_THAT(observer_.calls, ElementsAre(willBeRebuilt, willBeRebuilt, willBeRebuilt));
    EXPECT_EQ(rebuilder_->reasonForRebuildingIndex(), 2);
    endWalk();
    EXPECT_FALSE(rebuilder_->indexIsRebuilding());
}

TEST_F(IndexRebuilderTest, ALateDeliveryOfSeveralEventsStartsARebuildAndChainsAnother) {
    buildFirstIndex();
    deliver(60, {folderEvent, folderEvent});
    EXPECT_TRUE(rebuilder_->needToRebuildIndexAgain());
}

TEST_F(IndexRebuilderTest, IgnoresEventsThatConcernNoFolder) {
    buildFirstIndex();
    deliver(60, {fileEvent, 0});
    EXPECT_THAT(observer_.calls, IsEmpty());
    EXPECT_FALSE(rebuilder_->indexIsRebuilding());
}

TEST_F(IndexRebuilderTest, NotesTheTimeOfADeliveryWithoutEvents) {
    const auto start = mainLoop_.now();
    deliver(3, {});
    EXPECT_EQ(rebuilder_->lastFSEventTime(), start + std::chrono::seconds(3));
    EXPECT_EQ(rebuilder_->nextToLastFSEventTime(), start);
    EXPECT_THAT(observer_.calls, IsEmpty());
}

TEST_F(IndexRebuilderTest, ADeliveryFiveSecondsAfterTheOneBeforeMakesARunningWalkChain) {
    request(0);
    deliver(0, {});
    deliver(5, {folderEvent});
    endWalk();
    EXPECT_TRUE(rebuilder_->indexIsRebuilding());
    EXPECT_THAT(observer_.calls, Contains(willBeRebuilt));
}

TEST_F(IndexRebuilderTest, ADeliveryTwoSecondsAfterTheOneBeforeDoesNot) {
    request(0);
    deliver(0, {});
    deliver(2, {folderEvent});
    endWalk();
    EXPECT_FALSE(rebuilder_->indexIsRebuilding());
    EXPECT_THAT(observer_.calls, Contains(willBeRebuilt));
}

TEST_F(IndexRebuilderTest, ADeliveryExactlyFourSecondsAfterTheOneBeforeDoesNot) {
    request(0);
    deliver(4, {folderEvent});
    endWalk();
    EXPECT_FALSE(rebuilder_->indexIsRebuilding());
}

TEST_F(IndexRebuilderTest, MeasuresTheFirstDeliveryFromTheStart) {
    mainLoop_.time += std::chrono::milliseconds(7500);
    EXPECT_DOUBLE_EQ(rebuilder_->pushFSEventTime(mainLoop_.now()), 7.5);
    mainLoop_.time += std::chrono::seconds(2);
    EXPECT_DOUBLE_EQ(rebuilder_->pushFSEventTime(mainLoop_.now()), 2.0);
}

TEST_F(IndexRebuilderTest, KeepsTheOldIndexWhenAWalkFails) {
    addRoot(folder_.path());
    bool fails = false;
    useBuilder([&fails](const auto& roots, const auto& observer, const auto& stop) {
        if (fails) throw std::bad_alloc();
        return indexOfFolders(roots, observer, stop);
    });
    buildFirstIndex();
    const auto index = indexer_.index();
    fails = true;
    rebuilder_->setIndexedFoldersHaveChanged(true);
    testing::internal::CaptureStderr();
    request(1);
    endWalk();
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "brimwick: the folder index was not rebuilt: std::bad_alloc\n");
    EXPECT_EQ(indexer_.index(), index);
    EXPECT_FALSE(rebuilder_->indexIsRebuilding());
    EXPECT_THAT(observer_.calls, ElementsAre("progress hidden"));

    fails = false;
    request(1);
    endWalk();
    EXPECT_NE(indexer_.index(), index);
    EXPECT_THAT(observer_.calls, Contains(rebuilt));
}

TEST_F(IndexRebuilderTest, LocksNobodyOutWhenTheFirstWalkFails) {
    observer_.enabled = false;
    useBuilder([](const auto&, const auto&, const auto&) -> std::shared_ptr<const FolderIndex> {
        throw std::length_error("too many folders to index");
    });
    testing::internal::CaptureStderr();
    request(0);
    endWalk();
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "brimwick: the folder index was not rebuilt: too many folders to index\n");
    EXPECT_THAT(observer_.calls, ElementsAre("progress hidden", "picker enabled", "actions enabled"));
    EXPECT_FALSE(rebuilder_->indexHasBeenInitialized());
}

TEST_F(IndexRebuilderTest, StopsARunningWalkWhenItGoes) {
    std::atomic<bool> stopped = false;
    useBuilder([&stopped](const auto&, const auto&, const std::stop_token& stop) {
        while (!stop.stop_requested()) std::this_thread::yield();
        stopped = true;
        return std::shared_ptr<const FolderIndex>();
    });
    request(0);
    rebuilder_.reset();
    EXPECT_TRUE(stopped);
    EXPECT_FALSE(mainLoop_.hasTasks());
    EXPECT_THAT(observer_.calls, IsEmpty());
}

TEST_F(IndexRebuilderTest, LeavesAFinishedWalkUnpublishedWhenItGoesFirst) {
    addRoot(folder_.path());
    request(0);
    while (!mainLoop_.hasTasks()) std::this_thread::yield();
    rebuilder_.reset();
    ASSERT_TRUE(mainLoop_.runNext());
    EXPECT_EQ(indexer_.index()->size(), 0U);
    EXPECT_THAT(observer_.calls, IsEmpty());
}

TEST_F(IndexRebuilderTest, ShowsWhereTheWalkIsWhileItRuns) {
    std::atomic<bool> seen = false;
    useBuilder([&seen](const auto&, const auto& observer, const auto&) {
        observer("Documents");
        while (!seen) std::this_thread::yield();
        return std::make_shared<const FolderIndex>();
    });
    request(0);
    while (rebuilder_->scannedFolderName().get() != "Documents") std::this_thread::yield();
    EXPECT_FALSE(mainLoop_.hasTasks());
    seen = true;
    endWalk();
}

} // namespace brimwick
