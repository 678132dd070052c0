#include "folder_events/FolderEventsTest.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/stat.h>

#include <atomic>
#include <fstream>
#include <thread>

namespace brimwick {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

std::size_t mostQueuedEvents() {
    std::size_t most = 0;
    std::ifstream("/proc/sys/fs/inotify/max_queued_events") >> most;
    return most;
}

} // namespace

TEST_F(FolderEventsTest, TellsThatAFolderWasCreated) {
    makeFolder("a/b");
    start();
    EXPECT_EQ(figures_.watched, 3U);
    makeFolder("a/b/new");
    EXPECT_THAT(flagsUpTo(created), ElementsAre(created));
}

TEST_F(FolderEventsTest, TellsARenameOnce) {
    makeFolder("a/b");
    makeFolder("c");
    start();
    rename("a/b", "a/other");
    EXPECT_THAT(flagsUpTo(renamed), ElementsAre(renamed));
    rename("a/other", "c/b");
    EXPECT_THAT(flagsUpTo(renamed), ElementsAre(renamed));
}

TEST_F(FolderEventsTest, TellsARenameOnceThoughTheReaderWakesBetweenItsHalves) {
    makeFolder("a");
    start();
    constexpr std::size_t renames = 2000;
    for (std::size_t i = 0; i < renames; ++i) {
        rename(i % 2 == 0 ? "a" : "b", i % 2 == 0 ? "b" : "a");
        // The reader sleeps again, and is woken by the first half of the next one.
        ASSERT_THAT(nextFlags(1), ElementsAre(renamed)) << "the rename " << i;
    }
}

TEST_F(FolderEventsTest, TellsThatAFolderWasRemoved) {
    makeFolder("a/b");
    start();
    remove("a/b");
    EXPECT_THAT(flagsUpTo(removed), ElementsAre(removed));
}

TEST_F(FolderEventsTest, WatchesWhatWasMovedInOnceItWasWalked) {
    folder_.makeFolder("outside/x/y");
    start();
    std::filesystem::rename(folder_ / "outside/x", below("x"));
    EXPECT_THAT(flagsUpTo(created), ElementsAre(created));
    walk();
    EXPECT_EQ(figures_.watched, 3U);
    EXPECT_THAT(flagsSoFar(), IsEmpty());
    EXPECT_TRUE(onlyTellsWhatIsMadeIn("x/y"));
}

TEST_F(FolderEventsTest, WatchesNoLongerWhatWasMovedOut) {
    makeFolder("x/y");
    start();
    std::filesystem::rename(below("x"), folder_ / "x");
    EXPECT_THAT(flagsUpTo(removed), ElementsAre(removed));
    walk();
    folder_.makeFolder("x/y/z");
    EXPECT_TRUE(onlyTellsWhatIsMadeIn(""));
    walk();
    EXPECT_EQ(figures_.watched, 2U);
}

TEST_F(FolderEventsTest, LeavesOutWhatTheIndexDoesNotTakeUp) {
    makeFolder("a/.hidden/b");
    makeFolder("a/Mail.app/b");
    start();
    EXPECT_EQ(figures_.watched, 2U);
    makeFolder("a/.hidden/b/c");
    makeFolder("a/Mail.app/Contents");
    makeFolder("a/.git");
    rename("a/.git", "a/.svn");
    makeFolder("a/.brimwick-4711-0123456789abcdef.partial");
    remove("a/.brimwick-4711-0123456789abcdef.partial");
    makeFolder("a/Other.AppDir");
    rename("a/Other.AppDir", "a/Third.app");
    folder_.makeFile("root/a/file");
    rename("a/file", "a/renamed");
    remove("a/renamed");
    std::filesystem::create_directory_symlink(root_, below("a/link"));
    EXPECT_TRUE(onlyTellsWhatIsMadeIn("a"));
}

TEST_F(FolderEventsTest, ARenameBetweenATakenUpNameAndAnotherCounts) {
    makeFolder("a");
    start();
    rename("a", ".a");
    EXPECT_THAT(flagsUpTo(removed), ElementsAre(removed));
    rename(".a", "a");
    EXPECT_THAT(flagsUpTo(created), ElementsAre(created));
    rename("a", "a.app");
    EXPECT_THAT(flagsUpTo(removed), ElementsAre(removed));
    rename("a.app", "b");
    EXPECT_THAT(flagsUpTo(created), ElementsAre(created));
}

TEST_F(FolderEventsTest, AcceptsAnyNameThatTheSystemDoes) {
    const std::string odd = "two\nlines \xff\xfe \\ '";
    makeFolder(odd);
    start();
    EXPECT_TRUE(onlyTellsWhatIsMadeIn(odd));
    rename(odd, odd + "\t");
    EXPECT_THAT(flagsUpTo(renamed), ElementsAre(renamed));
}

TEST_F(FolderEventsTest, OneBatchIsOneDelivery) {
    options_.beforeReading = [this] { gate_.wait(); };
    makeFolder("a");
    start();
    gate_.close();
    makeFolder("b");
    rename("a", "c");
    remove("b");
    gate_.open();
    ASSERT_TRUE(runUntil([this] { return !deliveries_.empty() && deliveries_.back().back() == removed; }));
    // The first event may have woken the thread before the gate was closed.
    EXPECT_LE(deliveries_.size(), 2U);
    EXPECT_THAT(flagsSoFar(), ElementsAre(created, renamed, removed));
}

TEST_F(FolderEventsTest, LostEventsAreOneEventOfAFolder) {
    const std::size_t most = mostQueuedEvents();
    if (most == 0 || most > 300'000) GTEST_SKIP() << "the event queue holds " << most << " events";
    options_.beforeReading = [this] { gate_.wait(); };
    makeFolder("a");
    start();
    gate_.close();
    for (std::size_t i = 0; i <= most / 4 + 1; ++i) {
        rename("a", "b");
        rename("b", "a");
    }
    gate_.open();
    EXPECT_THAT(flagsUpTo(FolderEventFlag::isFolder), Contains(FolderEventFlag::isFolder).Times(1));
    EXPECT_TRUE(onlyTellsWhatIsMadeIn(""));
}

TEST_F(FolderEventsTest, WatchesFoldersBeyondTheLongestPath) {
    const std::string name(200, 'n');
    FileDescriptor at(open(root_.c_str(), O_PATH | O_DIRECTORY));
    constexpr std::size_t levels = 60;
    for (std::size_t i = 0; i < levels; ++i) {
        ASSERT_EQ(mkdirat(at.get(), name.c_str(), 0777), 0);
        at = FileDescriptor(openat(at.get(), name.c_str(), O_PATH | O_DIRECTORY));
        if (i % 20 == 10) {
            ASSERT_EQ(mkdirat(at.get(), "sibling", 0777), 0);
        }
    }
    start();
    EXPECT_EQ(figures_.watched, 1 + levels + 3);
    ASSERT_EQ(mkdirat(at.get(), "new", 0777), 0);
    EXPECT_THAT(flagsUpTo(created), ElementsAre(created));
}

TEST_F(FolderEventsTest, WatchesARootInsideAnotherOnce) {
    makeFolder("a/b");
    roots_.push_back(below("a"));
    start();
    EXPECT_EQ(figures_.watched, 3U);
    EXPECT_TRUE(onlyTellsWhatIsMadeIn("a/b"));
    walk();
    EXPECT_EQ(figures_.watched, 4U);
}

TEST_F(FolderEventsTest, ARootThatIsAddedLaterIsNotWatchedAndARemovedOneStaysSo) {
    const std::string first = root_;
    const std::string later = folder_.makeFolder("later");
    start();
    roots_ = {later};
    walk();
    std::filesystem::create_directory(later + "/unnoticed");
    EXPECT_TRUE(onlyTellsWhatIsMadeIn(""));
    EXPECT_EQ(figures_.watched, 1U);
    roots_ = {folder_.path()};
    walk();
    EXPECT_EQ(figures_.watched, 2U) << "the first root and the marker, not what else lies beside it";
    roots_ = {first + "/inside"};
    std::filesystem::create_directory(roots_[0]);
    walk();
    EXPECT_EQ(figures_.watched, 3U);
}

TEST_F(FolderEventsTest, ARootBelowAHiddenFolderStaysWatchedWhenItIsTakenFromTheList) {
    roots_ = {root_, folder_.makeFolder("root/.Trash")};
    start();
    roots_ = {root_};
    walk();
    EXPECT_EQ(figures_.watched, 2U);
    EXPECT_TRUE(onlyTellsWhatIsMadeIn(".Trash"));
}

TEST_F(FolderEventsTest, EndsInTheMiddleOfAMillionWatches) {
    /// Every folder of it is the root itself.
    class ManyTimesTheRoot : public FolderList {
      public:
        explicit ManyTimesTheRoot(std::string root) : root_(std::move(root)) {}
        std::size_t size() const override { return 10'000'000; }
        std::optional<FolderNumber> parent(FolderNumber folder) const override {
            if (folder == 0) return std::nullopt;
            return folder == 1 ? 0U : 1U;
        }
        std::string_view fileName(FolderNumber /*folder*/) const override { return "."; }
        std::string path(FolderNumber /*folder*/) const override { return root_; }

      private:
        std::string root_;
    };
    std::atomic<int> looks = 0;
    options_.beforeReading = [&looks] { ++looks; };
    startStream();
    stream_->walkEnded(std::make_shared<ManyTimesTheRoot>(root_));
    while (looks < 10) std::this_thread::yield();
    stream_.reset();
    EXPECT_EQ(figures_.watched, 0U) << "it had come to an end before";
}

TEST_F(FolderEventsTest, TellsNobodyOnceItIsGone) {
    start();
    makeFolder("new");
    while (!mainLoop_.hasTasks()) std::this_thread::yield();
    stream_.reset();
    EXPECT_THAT(flagsSoFar(), IsEmpty());
}

} // namespace brimwick
