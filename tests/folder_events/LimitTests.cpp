#include "folder_events/ChildProcess.h"
#include "folder_events/FolderEventsTest.h"
#include "platform/linux/inotify/WatchLimit.h"

#include <gmock/gmock.h>

namespace brimwick {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr std::chrono::milliseconds soon{1};

class WatchLimitTest : public FolderEventsTest {
  protected:
    WatchLimitTest() {
        options_.slowInterval = soon;
        for (int i = 0; i < 100; ++i) makeFolder("folder" + std::to_string(100 + i));
        // The folder that a comparison comes to last.
        const auto folders = walked();
        last_ = folders->path(static_cast<FolderNumber>(folders->size() - 1));
    }
    void makeMarker() const { std::filesystem::create_directory(last_ + "/marker"); }
    /// Whether comparisons tell that the marker has another name, and nothing else. The first of them may
    /// have begun before what the test did; the second has seen all of it.
    ::testing::AssertionResult onlyTellsThatTheMarkerIsRenamed() {
        std::filesystem::rename(last_ + "/marker", last_ + "/other");
        const Flags flags = nextFlags(2);
        if (flags == Flags{created | removed, created | removed}) return ::testing::AssertionSuccess();
        return ::testing::AssertionFailure() << "told " << testing::PrintToString(flags);
    }

    std::string last_;
};

} // namespace

TEST_F(WatchLimitTest, LeavesAPartOfTheWatchesToOthers) {
    EXPECT_EQ(WatchLimit(160).allowed(), 150U);
    EXPECT_EQ(WatchLimit(1'000'000).allowed(), 1'000'000U - 4096);
}

TEST_F(WatchLimitTest, GivesSomeBackWhenTheSystemHasNoMore) {
    WatchLimit limit(1600);
    limit.wasReachedAt(1000);
    EXPECT_EQ(limit.allowed(), 900U);
    limit.wasReachedAt(60);
    EXPECT_EQ(limit.allowed(), 30U);
    limit.wasReachedAt(500);
    EXPECT_EQ(limit.allowed(), 30U);
    limit.startAnew();
    EXPECT_EQ(limit.allowed(), 1500U);
}

TEST_F(WatchLimitTest, WatchesWhatFitsAndSaysSoOnce) {
    options_.watchLimit = 64;
    start();
    EXPECT_EQ(figures_.watched, 60U);
    EXPECT_EQ(figures_.compared, 41U);
    walk();
    flagsSoFar();
    EXPECT_THAT(
        limits_,
        ElementsAre("Changes in 41 of 101 folders will be noticed late, because the system lets a user "
                    "watch no more of them; to raise its limit, run \"sudo sysctl "
                    "fs.inotify.max_user_watches=1048576\"."));
}

TEST_F(WatchLimitTest, SaysNothingWhileThereIsRoom) {
    options_.watchLimit = 128;
    start();
    EXPECT_EQ(figures_.watched, 101U);
    EXPECT_THAT(flagsSoFar(), IsEmpty());
    EXPECT_THAT(limits_, IsEmpty());
}

TEST_F(WatchLimitTest, NoticesChangesOfFoldersThatItCannotWatch) {
    options_.watchLimit = 4;
    start();
    EXPECT_EQ(figures_.watched, 4U);
    for (int i = 0; i < 10; ++i) {
        makeFolder("folder" + std::to_string(100 + 10 * i) + "/new");
        EXPECT_THAT(flagsUpTo(created), ElementsAre(created));
        walk();
        flagsSoFar();
    }
}

TEST_F(WatchLimitTest, OtherFilesInAnUnwatchedFolderAreNoChange) {
    options_.watchLimit = 0;
    makeMarker();
    start();
    EXPECT_EQ(figures_.watched, 0U);
    folder_.makeFile("root/folder150/file");
    folder_.makeFile("root/folder199/file");
    makeFolder("folder101/.hidden");
    EXPECT_TRUE(onlyTellsThatTheMarkerIsRenamed());
}

TEST_F(WatchLimitTest, UsesTheRoomThatRemovedFoldersLeave) {
    options_.watchLimit = 64;
    start();
    for (int i = 0; i < 100; ++i)
        if (i % 2 == 0) remove("folder" + std::to_string(100 + i));
    walk();
    EXPECT_EQ(figures_.watched, 51U);
    EXPECT_EQ(figures_.compared, 0U);
}

TEST_F(WatchLimitTest, UsesTheRoomThatFoldersLeaveWhichMovedAway) {
    options_.watchLimit = 64;
    start();
    for (int i = 0; i < 100; ++i) {
        const std::string name = "folder" + std::to_string(100 + i);
        if (i % 2 == 0) std::filesystem::rename(below(name), folder_ / name);
    }
    walk();
    EXPECT_EQ(figures_.watched, 51U);
    EXPECT_EQ(figures_.compared, 0U);
}

TEST_F(WatchLimitTest, WithoutAnyWatchingItComparesAll) {
    options_.withoutInotify = true;
    makeMarker();
    start();
    EXPECT_FALSE(stream_->capability().available);
    EXPECT_THAT(stream_->capability().reason, HasSubstr("the system cannot watch them"));
    EXPECT_EQ(figures_.watched, 0U);
    EXPECT_EQ(figures_.compared, 102U);
    EXPECT_TRUE(onlyTellsThatTheMarkerIsRenamed());
    EXPECT_THAT(limits_, ElementsAre(stream_->capability().reason));
    walk();
    flagsSoFar();
    makeFolder("folder130/new");
    EXPECT_THAT(flagsUpTo(created), ElementsAre(created));
    walk();
    flagsSoFar();
    remove("folder130");
    EXPECT_THAT(flagsUpTo(removed), ElementsAre(removed));
}

TEST_F(WatchLimitTest, WithoutAnyWatchingItNoticesThatARootAppears) {
    options_.withoutInotify = true;
    std::filesystem::remove_all(root_);
    start();
    flagsSoFar();
    makeFolder("");
    EXPECT_THAT(flagsUpTo(created), ElementsAre(created));
}

TEST_F(WatchLimitTest, CarriesOnWhereTheSystemRefusesAFurtherWatch) {
    const auto refusal = inChildWithOwnLimits("max_inotify_watches", 80, [this] {
        start();
        // The way to the root takes watches, too; a part of the rest is given back.
        if (figures_.watched < 30 || figures_.watched > 79 - 1) return 1;
        if (figures_.watched + figures_.compared != 101) return 2;
        flagsSoFar();
        if (limits_.size() != 1) return 3;
        makeFolder("folder199/new");
        if (flagsUpTo(created) != Flags{created}) return 4;
        stream_.reset();
        return 0;
    });
    if (!refusal) GTEST_SKIP() << "no user namespace with limits of its own here";
    EXPECT_EQ(*refusal, 0);
}

TEST_F(WatchLimitTest, WatchesTheRestOnceTheSystemHasMoreWatches) {
    const auto refusal = inChildWithOwnLimits("max_inotify_watches", 80, [this] {
        start();
        if (figures_.compared == 0) return 1;
        std::ofstream("/proc/sys/user/max_inotify_watches") << 1000;
        walk();
        if (figures_.watched != 101 || figures_.compared != 0) return 2;
        stream_.reset();
        return 0;
    });
    if (!refusal) GTEST_SKIP() << "no user namespace with limits of its own here";
    EXPECT_EQ(*refusal, 0);
}

TEST_F(WatchLimitTest, SaysWhyWhenOthersHaveUsedAllQueues) {
    const auto refusal = inChildWithOwnLimits("max_inotify_instances", 0, [this] {
        start();
        if (stream_->capability().available) return 1;
        if (stream_->capability().reason.find("max_user_instances") == std::string::npos) return 2;
        makeFolder("folder199/new");
        if (flagsUpTo(created) != Flags{created}) return 3;
        stream_.reset();
        return 0;
    });
    if (!refusal) GTEST_SKIP() << "no user namespace with limits of its own here";
    EXPECT_EQ(*refusal, 0);
}

} // namespace brimwick
