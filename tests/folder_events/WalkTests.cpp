
#include "folder_events/FolderEventsTest.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <thread>

namespace brimwick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

} // namespace

TEST_F(FolderEventsTest, TellsAgainAfterAWalkWhatItMissed) {
    makeFolder("a");
    start();
    beginWalk();
    const auto found = walked();
    makeFolder("a/late");
    EXPECT_THAT(flagsUpTo(created), ElementsAre(created));
    endWalk(found);
    EXPECT_THAT(flagsSoFar(), ElementsAre(created));
    walk();
    EXPECT_THAT(flagsSoFar(), IsEmpty());
}

TEST_F(FolderEventsTest, DoesNotTellAgainWhatAWalkHasFound) {
    makeFolder("a");
    makeFolder("b");
    start();
    beginWalk();
    makeFolder("a/early");
    rename("b", "c");
    remove("a/early");
    makeFolder("a/early/inside");
    EXPECT_THAT(nextFlags(4), ElementsAre(created, renamed, removed, created));
    endWalk(walked());
    EXPECT_THAT(flagsSoFar(), IsEmpty());
}

TEST_F(FolderEventsTest, TellsWhatTheFirstWalkMissed) {
    makeFolder("a/b");
    startStream();
    const auto found = walked();
    makeFolder("a/b/late");
    endWalk(found);
    EXPECT_THAT(flagsSoFar(), ElementsAre(created));
}

TEST_F(FolderEventsTest, TellsThatAFolderWhichTheFirstWalkFoundIsGone) {
    makeFolder("a/b");
    startStream();
    const auto found = walked();
    remove("a/b");
    endWalk(found);
    EXPECT_THAT(flagsSoFar(), ElementsAre(removed));
}

TEST_F(FolderEventsTest, TellsWhatANewFolderWasFilledWithBeforeItWasWatched) {
    start();
    makeFolder("new");
    EXPECT_THAT(flagsUpTo(created), ElementsAre(created));
    beginWalk();
    const auto found = walked();
    makeFolder("new/filled/later");
    endWalk(found);
    EXPECT_THAT(flagsSoFar(), ElementsAre(created));
    EXPECT_EQ(figures_.watched, 2U);
    walk();
    EXPECT_EQ(figures_.watched, 4U);
    EXPECT_THAT(flagsSoFar(), IsEmpty());
}

TEST_F(FolderEventsTest, TellsThatAnotherFolderTookTheNameOfOneDuringAWalk) {
    makeFolder("a/deep/one");
    folder_.makeFolder("outside/deep/two");
    start();
    waitUntilOld(folder_ / "outside/deep/two");
    beginWalk();
    const auto found = walked();
    std::filesystem::rename(below("a"), folder_ / "taken");
    std::filesystem::rename(folder_ / "outside", below("a"));
    EXPECT_THAT(nextFlags(2), ElementsAre(removed, created));
    endWalk(found);
    EXPECT_THAT(flagsSoFar(), ElementsAre(created | removed));
}

TEST_F(FolderEventsTest, TellsThatAnotherFolderTookTheNameOfOneDuringTheFirstWalk) {
    makeFolder("a/deep/one");
    folder_.makeFolder("outside/deep/two");
    waitUntilOld(folder_ / "outside/deep/two");
    startStream();
    const auto found = walked();
    std::filesystem::rename(below("a"), folder_ / "taken");
    std::filesystem::rename(folder_ / "outside", below("a"));
    endWalk(found);
    EXPECT_THAT(flagsSoFar(), ElementsAre(created | removed));
}

TEST_F(FolderEventsTest, TellsThatTwoWatchedFoldersSwappedTheirNamesDuringAWalk) {
    makeFolder("a/deep/one");
    makeFolder("b/deep/two");
    start();
    waitUntilOld(below("b/deep/two"));
    beginWalk();
    const auto found = walked();
    rename("a", "c");
    rename("b", "a");
    rename("c", "b");
    EXPECT_THAT(nextFlags(3), ElementsAre(renamed, renamed, renamed));
    endWalk(found);
    EXPECT_THAT(flagsSoFar(), ElementsAre(created | removed));
}

TEST_F(FolderEventsTest, TellsOnceMoreWhenAWalkIsGivenUpThatShouldHaveFoundAChange) {
    start();
    beginWalk();
    makeFolder("missed");
    EXPECT_THAT(flagsUpTo(created), ElementsAre(created));
    stream_->walkEnded(nullptr);
    EXPECT_THAT(flagsUpTo(FolderEventFlag::isFolder), ElementsAre(FolderEventFlag::isFolder));
    beginWalk();
    stream_->walkEnded(nullptr);
    EXPECT_TRUE(onlyTellsWhatIsMadeIn(""));
}

TEST_F(FolderEventsTest, FollowsTheLastOfSeveralWalks) {
    startStream();
    const auto first = walked();
    makeFolder("a/b");
    stream_->walkEnded(first);
    beginWalk();
    const auto second = walked();
    stream_->walkEnded(second);
    beginWalk();
    endWalk(walked());
    EXPECT_EQ(figures_.watched, 3U);
    flagsSoFar();
    EXPECT_TRUE(onlyTellsWhatIsMadeIn("a/b"));
}

TEST_F(FolderEventsTest, ARemovedFolderThatIsMadeAnewIsWatchedAgain) {
    makeFolder("a/b");
    start();
    remove("a");
    makeFolder("a/b");
    flagsUpTo(created);
    walk();
    EXPECT_THAT(flagsSoFar(), IsEmpty());
    EXPECT_TRUE(onlyTellsWhatIsMadeIn("a/b"));
}

} // namespace brimwick
