#include "fakes/OrdinaryUser.h"
#include "fakes/TemporaryFolder.h"
#include "model/FolderListing.h"
#include "model/FolderWalk.h"
#include "model/PathText.h"

#include <dirent.h>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <climits>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <system_error>
#include <vector>

namespace brimwick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

std::vector<std::string> paths(const FolderTree& folders) {
    std::vector<std::string> paths;
    for (FolderNumber folder = 0; folder < folders.size(); ++folder) paths.push_back(folders.path(folder));
    return paths;
}

void ignoreName(std::string_view) {}

std::vector<std::string> walk(const std::vector<std::string>& roots, unsigned threads = usualThreads(),
                              const FolderNameObserver& observer = ignoreName) {
    FolderTree folders;
    FolderWalk walk(folders, observer, {}, threads);
    for (const std::string& root : roots) EXPECT_TRUE(walk.addRootDirectoryAndSubFoldersToIndex(root));
    return paths(folders);
}

/// By one thread, so that the names come in the order of the walk.
std::vector<std::string> walk(const std::vector<std::string>& roots, const FolderNameObserver& observer) {
    return walk(roots, 1, observer);
}

/// What the walk is to find in a tree without folders to be left out, read in the plainest way.
void expectedPaths(const std::string& path, std::vector<std::string>& expected) {
    expected.push_back(path);
    for (const auto& entry : std::filesystem::directory_iterator(path))
        if (entry.is_directory() && !entry.is_symlink()) expectedPaths(entry.path().string(), expected);
}

/// A chain of folders called `name`, each in the one before, longer than any path may be.
class DeepFolder {
  public:
    DeepFolder(std::string top, const std::string& name, int depth) : top_(std::move(top)), name_(name) {
        FileDescriptor folder = opened(AT_FDCWD, top_);
        for (int level = 0; level < depth; ++level) {
            if (mkdirat(folder.get(), name_.c_str(), 0755) != 0) throw std::runtime_error("no deep folder");
            folder = opened(folder.get(), name_);
        }
    }
    /// Takes the chain apart from its top, where paths are short.
    ~DeepFolder() {
        const std::string first = top_ + "/" + name_;
        const std::string rest = top_ + "/rest";
        while (rename((first + "/" + name_).c_str(), rest.c_str()) == 0) {
            std::filesystem::remove_all(first);
            rename(rest.c_str(), first.c_str());
        }
    }

  private:
    static FileDescriptor opened(int directory, const std::string& name) {
        FileDescriptor folder(openat(directory, name.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        if (!folder) throw std::runtime_error("no deep folder");
        return folder;
    }

    std::string top_;
    std::string name_;
};

/// Three folders, three more in the one of them that is listed first, and so on downwards. Yields these first
/// ones: after each the walk has two more to come to on its way up.
std::vector<std::string> makeStairs(const TemporaryFolder& folder, int steps) {
    std::vector<std::string> firsts;
    std::string step = folder.path();
    while (steps-- > 0) {
        for (const char* name : {"/a", "/b", "/c"}) std::filesystem::create_directory(step + name);
        step = std::filesystem::directory_iterator(step)->path().string();
        firsts.push_back(step);
    }
    return firsts;
}

/// At most this many open files, until it goes.
class OpenFileLimit {
  public:
    explicit OpenFileLimit(rlim_t most) {
        getrlimit(RLIMIT_NOFILE, &former_);
        const rlimit limit{most, former_.rlim_max};
        setrlimit(RLIMIT_NOFILE, &limit);
    }
    ~OpenFileLimit() { setrlimit(RLIMIT_NOFILE, &former_); }

  private:
    rlimit former_{};
};

} // namespace

TEST(FolderWalk, AddsARootWithoutSubfoldersAlone) {
    const TemporaryFolder folder;
    folder.makeFile("a file");
    EXPECT_THAT(walk({folder.path()}), ElementsAre(folder.path()));
}

TEST(FolderWalk, LeavesOutDotFoldersAndPackagesWithAllInside) {
    const TemporaryFolder folder;
    folder.makeFolder("a/b");
    folder.makeFolder(".git/x");
    folder.makeFolder("App.app/Contents");
    EXPECT_THAT(walk({folder.path()}), ElementsAre(folder.path(), folder / "a", folder / "a/b"));
}

TEST(FolderWalk, FailsRatherThanLeaveFoldersOutForWantOfDescriptors) {
    const TemporaryFolder folder;
    folder.makeFolder("a/b/c");
    const FileDescriptor next(open("/dev/null", O_RDONLY | O_CLOEXEC));
    for (const rlim_t room : {0U, 1U, 2U}) {
        const OpenFileLimit limit(static_cast<rlim_t>(next.get()) + 1 + room);
        FolderTree folders;
        FolderWalk walk(folders, ignoreName, {}, 1);
        EXPECT_THROW(walk.addRootDirectoryAndSubFoldersToIndex(folder.path()), std::system_error) << room;
    }
}

TEST(FolderWalk, NeverFollowsLinks) {
    const TemporaryFolder folder;
    folder.makeFolder("real/inside");
    std::filesystem::create_directory_symlink(folder / "real", folder / "link");
    std::filesystem::create_directory_symlink("..", folder / "real/up");
    std::filesystem::create_symlink("nowhere", folder / "dangling");
    EXPECT_THAT(walk({folder.path()}), ElementsAre(folder.path(), folder / "real", folder / "real/inside"));
}

TEST(FolderWalk, LeavesOutWhateverIsNoFolder) {
    const TemporaryFolder folder;
    folder.makeFile("file");
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    EXPECT_THAT(walk({folder.path()}), ElementsAre(folder.path()));
}

TEST(FolderWalk, AddsEachFolderBeforeItsSubfoldersInTheOrderOfTheListing) {
    const TemporaryFolder folder;
    for (int i = 0; i < 30; ++i)
        for (int j = 0; j < 4; ++j)
            folder.makeFolder("folder " + std::to_string(i * 7919 % 31) + "/inside " + std::to_string(j) +
                              "/x");
    std::vector<std::string> expected;
    expectedPaths(folder.path(), expected);
    ASSERT_EQ(expected.size(), 1 + 30 + 120 + 120U);
    EXPECT_EQ(walk({folder.path()}), expected);
}

TEST(FolderWalk, YieldsTheSameOrderHoweverManyThreadsTakePart) {
    const TemporaryFolder folder;
    std::uint32_t random = 1;
    std::vector<std::string> parents = {"."};
    for (int i = 0; i < 3000; ++i) {
        random = random * 1664525 + 1013904223;
        parents.push_back(parents[random / 7 % parents.size()] + "/" + std::to_string(i));
        folder.makeFolder(parents.back());
    }
    std::vector<std::string> expected;
    expectedPaths(folder.path(), expected);
    for (const unsigned threads : {1U, 2U, 3U, 8U})
        for (int repetition = 0; repetition < 5; ++repetition)
            EXPECT_EQ(walk({folder.path()}, threads), expected) << threads << " threads";
}

TEST(FolderWalk, SharesAFolderWithNothingButLeavesBetweenThreads) {
    const TemporaryFolder folder;
    for (int i = 0; i < 1000; ++i) folder.makeFolder("leaf " + std::to_string(i));
    std::vector<std::string> expected;
    expectedPaths(folder.path(), expected);
    for (int repetition = 0; repetition < 20; ++repetition) EXPECT_EQ(walk({folder.path()}, 4), expected);
}

TEST(FolderWalk, PassesOnWhatAThreadThrows) {
    const TemporaryFolder folder;
    for (int i = 0; i < 100; ++i) folder.makeFolder("folder " + std::to_string(i) + "/inside");
    FolderTree folders;
    const auto fail = [](std::string_view name) {
        if (name == "inside") throw std::length_error("full");
    };
    FolderWalk walk(folders, fail, {}, 4);
    EXPECT_THROW(walk.addRootDirectoryAndSubFoldersToIndex(folder.path()), std::length_error);
}

TEST(FolderWalk, FindsSubfoldersAmongManyFilesAndDotFolders) {
    const TemporaryFolder folder;
    for (int i = 0; i < 1500; ++i) {
        folder.makeFile("a/file with a rather long name " + std::to_string(i));
        if (i % 100 == 0) folder.makeFolder("a/.hidden " + std::to_string(i));
        if (i % 150 == 0) folder.makeFolder("a/folder " + std::to_string(i));
        if (i % 200 == 0) folder.makeFolder("a/" + std::to_string(i) + ".app");
    }
    EXPECT_EQ(walk({folder.path()}).size(), 2 + 10U);
}

TEST(FolderWalk, ReadsFoldersWithMoreEntriesThanOneReadYields) {
    const TemporaryFolder folder;
    for (int i = 0; i < 2000; ++i) folder.makeFolder("a folder with a rather long name " + std::to_string(i));
    std::vector<std::string> expected;
    expectedPaths(folder.path(), expected);
    EXPECT_EQ(walk({folder.path()}), expected);
}

TEST(FolderWalk, AddsTheFoldersOfARootInsideAnotherTwice) {
    const TemporaryFolder folder;
    folder.makeFolder("inner/x");
    EXPECT_THAT(walk({folder.path(), folder / "inner"}),
                ElementsAre(folder.path(), folder / "inner", folder / "inner/x", folder / "inner",
                            folder / "inner/x"));
}

TEST(FolderWalk, WalksARootThatIsListedTwiceTwice) {
    const TemporaryFolder folder;
    folder.makeFolder("x");
    EXPECT_THAT(walk({folder.path(), folder.path()}),
                ElementsAre(folder.path(), folder / "x", folder.path(), folder / "x"));
}

TEST(FolderWalk, WalksADotNamedRootAndAPackageAsRoot) {
    const TemporaryFolder folder;
    folder.makeFolder(".Trash/old");
    folder.makeFolder(".Trash/.hidden");
    folder.makeFolder("App.app/Contents");
    FolderTree folders;
    FolderWalk walk(folders, ignoreName);
    walk.addRootDirectoryAndSubFoldersToIndex(folder / ".Trash");
    walk.addRootDirectoryAndSubFoldersToIndex(folder / "App.app");
    EXPECT_THAT(paths(folders), ElementsAre(folder / ".Trash", folder / ".Trash/old", folder / "App.app",
                                            folder / "App.app/Contents"));
    EXPECT_EQ(folders.displayName(0), "Trash");
}

TEST(FolderWalk, WalksTheFolderThatALinkedRootPointsAt) {
    const TemporaryFolder folder;
    folder.makeFolder("files/old");
    std::filesystem::create_directory_symlink("files", folder / ".Trash");
    EXPECT_THAT(walk({folder / ".Trash"}), ElementsAre(folder / ".Trash", folder / ".Trash/old"));
}

TEST(FolderWalk, AddsARootThatIsGoneWithoutAName) {
    FolderTree folders;
    EXPECT_TRUE(FolderWalk(folders, ignoreName).addRootDirectoryAndSubFoldersToIndex("/no/such/root"));
    EXPECT_THAT(paths(folders), ElementsAre("/no/such/root"));
    EXPECT_EQ(folders.displayName(0), "");
}

TEST(FolderWalk, AddsARootThatIsNoFolderAlone) {
    const TemporaryFolder folder;
    folder.makeFile("file");
    std::filesystem::create_symlink("nowhere", folder / "dangling");
    EXPECT_THAT(walk({folder / "file", folder / "dangling", "", "relative"}),
                ElementsAre(folder / "file", folder / "dangling", "", "relative"));
}

TEST(FolderWalk, TakesNoPathUpToANulForTheWholePath) {
    const TemporaryFolder folder;
    folder.makeFolder("a");
    const std::string path = folder.path() + std::string("\0x", 2);
    EXPECT_THAT(walk({path}), ElementsAre(path));
}

TEST(FolderWalk, AddsFoldersThatCannotBeListedWithoutSubfolders) {
    const TemporaryFolder folder;
    std::filesystem::permissions(folder.path(), std::filesystem::perms(0755));
    folder.makeFolder("locked root/inside");
    folder.makeFolder("root/locked/inside");
    folder.makeFolder("root/open/inside");
    for (const char* locked : {"locked root", "root/locked"})
        std::filesystem::permissions(folder / locked, std::filesystem::perms::none);
    std::vector<std::string> found;
    {
        const OrdinaryUser user;
        found = walk({folder / "locked root", folder / "root"});
    }
    for (const char* locked : {"locked root", "root/locked"})
        std::filesystem::permissions(folder / locked, std::filesystem::perms::owner_all);
    EXPECT_THAT(found, UnorderedElementsAre(folder / "locked root", folder / "root", folder / "root/locked",
                                            folder / "root/open", folder / "root/open/inside"));
}

TEST(FolderWalk, LeavesOutWhatLiesInAFolderThatCannotBeEntered) {
    const TemporaryFolder folder;
    std::filesystem::permissions(folder.path(), std::filesystem::perms(0755));
    folder.makeFolder("listed only/inside/deep");
    std::filesystem::permissions(folder / "listed only", std::filesystem::perms(0444));
    std::vector<std::string> found;
    {
        const OrdinaryUser user;
        found = walk({folder.path()});
    }
    std::filesystem::permissions(folder / "listed only", std::filesystem::perms(0755));
    EXPECT_THAT(found, ElementsAre(folder.path(), folder / "listed only"));
}

TEST(FolderWalk, KeepsOddNamesByteForByte) {
    const TemporaryFolder folder;
    const std::string longest(255, 'n');
    const std::vector<std::string> names = {"new\nline", "Caf\xE9", "-rf", " ", "a\\b", longest, "\xFF\xFE"};
    for (const std::string& name : names) folder.makeFolder(name);
    std::vector<std::string> expected = {folder.path()};
    for (const std::string& name : names) expected.push_back(folder / name);
    EXPECT_THAT(walk({folder.path()}), testing::UnorderedElementsAreArray(expected));
}

TEST(FolderWalk, TellsEachSubfolderBeforeItDescends) {
    const TemporaryFolder folder;
    folder.makeFolder("a/b/c");
    std::vector<std::string> told;
    walk({folder.path()}, [&told](std::string_view name) { told.emplace_back(name); });
    EXPECT_THAT(told, ElementsAre("a", "b", "c"));
}

TEST(FolderWalk, StopsWhenItIsToldTo) {
    const TemporaryFolder folder;
    folder.makeFolder("a/b/c/d");
    FolderTree folders;
    std::stop_source stop;
    const auto stopAtB = [&stop](std::string_view name) {
        if (name == "b") stop.request_stop();
    };
    for (const unsigned threads : {1U, 4U}) {
        FolderWalk walk(folders, stopAtB, stop.get_token(), threads);
        EXPECT_FALSE(walk.addRootDirectoryAndSubFoldersToIndex(folder.path()));
    }
}

TEST(FolderWalk, LeavesOutAFolderThatVanishesBeforeItsTurn) {
    const TemporaryFolder folder;
    folder.makeFolder("a/gone/inside");
    const auto removeIt = [&folder](std::string_view name) {
        if (name == "gone") std::filesystem::remove_all(folder / "a/gone");
    };
    EXPECT_THAT(walk({folder.path()}, removeIt), ElementsAre(folder.path(), folder / "a"));
}

TEST(FolderWalk, FollowsNoLinkThatTakesTheFoldersPlace) {
    const TemporaryFolder folder;
    const TemporaryFolder elsewhere;
    elsewhere.makeFolder("secret");
    folder.makeFolder("a");
    const auto replaceIt = [&](std::string_view) {
        std::filesystem::remove(folder / "a");
        std::filesystem::create_directory_symlink(elsewhere.path(), folder / "a");
    };
    EXPECT_THAT(walk({folder.path()}, replaceIt), ElementsAre(folder.path()));
}

TEST(FolderWalk, WalksFarBelowTheLongestPathWithFewFilesOpen) {
    const TemporaryFolder folder;
    constexpr FolderNumber depth = 4000;
    const DeepFolder deep(folder.path(), "level", depth);
    FolderTree folders;
    {
        const OpenFileLimit limit(64);
        EXPECT_TRUE(FolderWalk(folders, ignoreName).addRootDirectoryAndSubFoldersToIndex(folder.path()));
    }
    ASSERT_EQ(folders.size(), 1 + depth);
    std::string expected = folder.path();
    for (FolderNumber level = 0; level < depth; ++level) expected += "/level";
    EXPECT_GT(expected.size(), static_cast<std::size_t>(PATH_MAX));
    EXPECT_EQ(folders.path(depth), expected);
}

TEST(FolderWalk, FindsTheWayUpFromAnyDepth) {
    const TemporaryFolder folder;
    makeStairs(folder, 100);
    std::vector<std::string> expected;
    expectedPaths(folder.path(), expected);
    EXPECT_EQ(walk({folder.path()}), expected);
}

TEST(FolderWalk, FindsTheWayUpFromAFolderThatIsMovedAway) {
    const TemporaryFolder folder;
    const TemporaryFolder elsewhere;
    const std::vector<std::string> stairs = makeStairs(folder, 40);
    makeStairs(elsewhere, 1);
    std::vector<std::string> expected;
    expectedPaths(folder.path(), expected);
    int descents = 0;
    const auto moveAway = [&](std::string_view) {
        if (++descents == 40) std::filesystem::rename(stairs[3], elsewhere / "moved");
    };
    EXPECT_EQ(walk({folder.path()}, moveAway), expected);
}

TEST(FolderWalk, GoesOnAboveAFolderThatCannotBeFoundAgain) {
    const TemporaryFolder folder;
    const TemporaryFolder elsewhere;
    const std::vector<std::string> stairs = makeStairs(folder, 40);
    makeStairs(elsewhere, 1);
    std::vector<std::string> expected;
    expectedPaths(folder.path(), expected);
    // Between the two folders that are moved nothing can be reached any more.
    std::erase_if(expected, [&stairs](const std::string& path) {
        for (const std::size_t lost : {1U, 2U, 3U})
            if (parentPath(path) == stairs[lost] && path != stairs[lost + 1]) return true;
        return false;
    });
    int descents = 0;
    const auto moveAway = [&](std::string_view) {
        if (++descents != 40) return;
        std::filesystem::rename(stairs[4], elsewhere / "deeper");
        std::filesystem::rename(stairs[1], elsewhere / "moved");
    };
    EXPECT_EQ(walk({folder.path()}, moveAway), expected);
}

TEST(FolderListing, AsksTheDiskWhereTheFileSystemDoesNotTellTheType) {
    const TemporaryFolder folder;
    folder.makeFolder("folder");
    folder.makeFile("file");
    std::filesystem::create_directory_symlink("folder", folder / "link");
    const FileDescriptor directory(open(folder.path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    EXPECT_TRUE(isFolder(directory.get(), "folder", DT_UNKNOWN));
    EXPECT_FALSE(isFolder(directory.get(), "file", DT_UNKNOWN));
    EXPECT_FALSE(isFolder(directory.get(), "link", DT_UNKNOWN));
    EXPECT_FALSE(isFolder(directory.get(), "missing", DT_UNKNOWN));
}

} // namespace brimwick
