#include "folder_events/ChildProcess.h"
#include "folder_events/FolderEventsTest.h"

#include <gmock/gmock.h>
#include <sys/mount.h>

namespace brimwick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

} // namespace

TEST_F(FolderEventsTest, TellsThatARootIsRemovedAndMadeAnew) {
    start();
    std::filesystem::remove(root_);
    EXPECT_THAT(flagsUpTo(removed), ElementsAre(removed));
    walk();
    EXPECT_THAT(flagsSoFar(), IsEmpty());
    EXPECT_EQ(figures_.watched, 0U);
    makeFolder("a");
    EXPECT_THAT(flagsUpTo(created), ElementsAre(created));
    walk();
    EXPECT_THAT(flagsSoFar(), IsEmpty());
    EXPECT_TRUE(onlyTellsWhatIsMadeIn("a"));
}

TEST_F(FolderEventsTest, TellsThatARootIsRenamedAndComesBack) {
    makeFolder("a");
    start();
    std::filesystem::rename(root_, folder_ / "elsewhere");
    EXPECT_THAT(flagsUpTo(removed), ElementsAre(removed));
    walk();
    EXPECT_EQ(figures_.watched, 0U);
    std::filesystem::rename(folder_ / "elsewhere", root_);
    EXPECT_THAT(flagsUpTo(created), ElementsAre(created));
    walk();
    EXPECT_TRUE(onlyTellsWhatIsMadeIn("a"));
}

TEST_F(FolderEventsTest, TellsThatAFolderAboveARootIsRenamed) {
    roots_ = {folder_.makeFolder("root/above/below/it")};
    start();
    rename("above", "other");
    EXPECT_THAT(flagsUpTo(removed), ElementsAre(removed));
    walk();
    makeFolder("above");
    makeFolder("above/below/it");
    EXPECT_THAT(flagsUpTo(created), ElementsAre(created));
}

TEST_F(FolderEventsTest, TellsThatARootAppearsThatWasMissingAtTheStart) {
    roots_ = {folder_ / "not/yet/there", root_};
    start();
    EXPECT_EQ(figures_.watched, 1U);
    folder_.makeFolder("not/yet");
    folder_.makeFolder("not/yet/there/a");
    EXPECT_THAT(flagsUpTo(created), ElementsAre(created));
    walk();
    EXPECT_EQ(figures_.watched, 3U);
}

TEST_F(FolderEventsTest, TellsThatARootAppearedWhileItWasWalkedFirst) {
    std::filesystem::remove(root_);
    startStream();
    const auto found = walked();
    makeFolder("");
    endWalk(found);
    const Flags told = flagsSoFar();
    ASSERT_THAT(told, Not(IsEmpty()));
    EXPECT_EQ(told.back(), created);
    walk();
    EXPECT_THAT(flagsSoFar(), IsEmpty());
}

TEST_F(FolderEventsTest, FollowsARootThatIsALink) {
    folder_.makeFolder("one/a");
    folder_.makeFolder("two/b");
    const std::string link = folder_ / "link";
    std::filesystem::create_directory_symlink("one", link);
    roots_ = {link};
    start();
    EXPECT_EQ(figures_.watched, 2U);
    folder_.makeFolder("one/a/c");
    EXPECT_THAT(flagsUpTo(created), ElementsAre(created));
    walk();

    std::filesystem::create_directory_symlink("two", folder_ / "next");
    std::filesystem::rename(folder_ / "next", link);
    EXPECT_THAT(flagsUpTo(renamed), ElementsAre(renamed));
    walk();
    std::filesystem::rename(folder_ / "two", folder_ / "three");
    EXPECT_THAT(flagsUpTo(removed), ElementsAre(removed));
    walk();
    std::filesystem::rename(folder_ / "three", folder_ / "two");
    EXPECT_THAT(flagsUpTo(created), ElementsAre(created));
}

TEST_F(FolderEventsTest, ARootThatChangesDuringAWalkIsToldAgainAfterIt) {
    start();
    beginWalk();
    const auto found = walked();
    std::filesystem::rename(root_, folder_ / "elsewhere");
    EXPECT_THAT(flagsUpTo(removed), ElementsAre(removed));
    endWalk(found);
    EXPECT_THAT(flagsSoFar(), ElementsAre(FolderEventFlag::isFolder));
}

TEST_F(FolderEventsTest, OtherFoldersBesideARootAreNoChange) {
    start();
    folder_.makeFolder("beside");
    std::filesystem::remove(folder_ / "beside");
    folder_.makeFile("root2");
    EXPECT_TRUE(onlyTellsWhatIsMadeIn(""));
}

TEST_F(FolderEventsTest, TellsThatAFileSystemIsMountedAndUnmounted) {
    const auto result = inChildWithOwnMounts([this] {
        makeFolder("disk");
        makeFolder(".hidden");
        const auto mountOn = [](const std::string& path) {
            return mount("none", path.c_str(), "tmpfs", 0, nullptr) == 0;
        };
        if (!mountOn(below("disk"))) return 77;
        makeFolder("disk/a");
        start();
        if (figures_.watched != 3) return 1;
        // Where no index looks, and elsewhere altogether.
        if (!mountOn(below(".hidden")) || !mountOn(folder_.makeFolder("elsewhere"))) return 2;
        if (umount(below("disk").c_str()) != 0) return 3;
        if (flagsUpTo(removed) != Flags{removed}) return 4;
        walk();
        if (figures_.watched != 2 || !flagsSoFar().empty()) return 5;
        if (!mountOn(below("disk"))) return 6;
        if (flagsUpTo(created) != Flags{created}) return 7;
        walk();
        if (!onlyTellsWhatIsMadeIn("disk")) return 8;
        stream_.reset();
        umount(below("disk").c_str());
        umount(below(".hidden").c_str());
        umount((folder_ / "elsewhere").c_str());
        return 0;
    });
    if (!result) GTEST_SKIP() << "mounting takes root and a mount namespace";
    EXPECT_EQ(*result, 0);
}

TEST_F(FolderEventsTest, TellsThatTheFileSystemOfARootIsUnmounted) {
    const auto result = inChildWithOwnMounts([this] {
        if (mount("none", root_.c_str(), "tmpfs", 0, nullptr) != 0) return 77;
        makeFolder("a");
        start();
        if (umount(root_.c_str()) != 0) return 1;
        if (flagsUpTo(removed) != Flags{removed}) return 2;
        walk();
        if (figures_.watched != 1 || !flagsSoFar().empty()) return 3;
        if (!onlyTellsWhatIsMadeIn("")) return 4;
        stream_.reset();
        return 0;
    });
    if (!result) GTEST_SKIP() << "mounting takes root and a mount namespace";
    EXPECT_EQ(*result, 0);
}

} // namespace brimwick
