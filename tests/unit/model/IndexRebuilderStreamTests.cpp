#include <gmock/gmock.h>

#include "unit/model/IndexRebuilderTest.h"

namespace brimwick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::uint32_t folderEvent = 0x20000;
constexpr const char* willBeRebuilt = "told: Index will be rebuilt because an indexed folder changed.";

} // namespace

TEST_F(IndexRebuilderTest, WatchesNothingWhenNoFolderIsIndexed) {
    buildFirstIndex();
    rebuilder_->initializeEventStream();
    EXPECT_FALSE(rebuilder_->fileSystemEventMonitoringEnabled());
    EXPECT_THAT(folderEvents_.calls, ElementsAre("walk begins", "walk ended"));
}

TEST_F(IndexRebuilderTest, WatchesTheIndexedFoldersInTheirOrder) {
    addRoot(folder_ / "two");
    addRoot(folder_ / "one");
    request(0);
    rebuilder_->initializeEventStream();
    EXPECT_TRUE(rebuilder_->fileSystemEventMonitoringEnabled());
    EXPECT_THAT(folderEvents_.roots, ElementsAre(folder_ / "two", folder_ / "one"));
    EXPECT_TRUE(folderEvents_.rules.isIndexedName("folder"));
    EXPECT_FALSE(folderEvents_.rules.isIndexedName(".folder"));
    EXPECT_FALSE(folderEvents_.rules.isIndexedName("folder.app"));
    endWalk();
    EXPECT_THAT(folderEvents_.calls, ElementsAre("walk begins", "started", "walk ended"));
    EXPECT_EQ(folderEvents_.found, indexer_.index());
}

TEST_F(IndexRebuilderTest, RebuildsWhenTheStreamTellsOfAFolder) {
    addRoot(folder_.path());
    rebuilder_->initializeEventStream();
    buildFirstIndex();
    folder_.makeFolder("new");
    folderEvents_.handlers.eventsArrived({folderEvent | 0x100});
    EXPECT_THAT(observer_.calls, ElementsAre(willBeRebuilt));
    endWalk();
    EXPECT_EQ(indexer_.index()->size(), 2U);
}

TEST_F(IndexRebuilderTest, TellsTheStreamOfEveryWalkBeforeTheNextOneBegins) {
    request(0);
    changeMuchLater();
    endWalk();
    endWalk();
    EXPECT_THAT(folderEvents_.calls, ElementsAre("walk begins", "walk ended", "walk begins", "walk ended"));
    request(1);
    EXPECT_THAT(folderEvents_.calls, testing::SizeIs(4)) << "nothing changed, so that there is no walk";
}

TEST_F(IndexRebuilderTest, TellsTheStreamOfAWalkThatFails) {
    useBuilder([](const auto&, const auto&, const auto&) -> std::shared_ptr<const FolderIndex> {
        throw std::bad_alloc();
    });
    testing::internal::CaptureStderr();
    request(0);
    endWalk();
    testing::internal::GetCapturedStderr();
    EXPECT_THAT(folderEvents_.calls, ElementsAre("walk begins", "walk given up"));
}

TEST_F(IndexRebuilderTest, TellsTheUserThatNotAllFoldersCanBeWatched) {
    addRoot(folder_.path());
    rebuilder_->initializeEventStream();
    folderEvents_.handlers.watchingIsLimited("Some changes will be noticed late.");
    EXPECT_THAT(observer_.calls, ElementsAre("told: Some changes will be noticed late."));
}

TEST_F(IndexRebuilderTest, HearsNothingFromTheStreamOnceItIsGone) {
    addRoot(folder_.path());
    rebuilder_->initializeEventStream();
    rebuilder_.reset();
    folderEvents_.handlers.eventsArrived({folderEvent});
    folderEvents_.handlers.watchingIsLimited("late");
    EXPECT_THAT(observer_.calls, IsEmpty());
}

} // namespace brimwick
