#include "fakes/OrdinaryUser.h"
#include "platform/ports/FileDescriptor.h"

#include <gmock/gmock.h>
#include <sys/socket.h>
#include <sys/un.h>

#include "unit/actions/FileFacts.h"
#include "unit/actions/Transfers.h"

namespace brimwick {

namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

Destination at(const std::string& path) {
    return {path, {}, {}, {}};
}

/// Candidates "PATH 1", "PATH 2", ...
Destination numbered(const std::string& path) {
    return {path, [path, number = 0]() mutable { return path + " " + std::to_string(++number); }, {}, {}};
}

/// Every test runs within one file system and between two.
class MoveItem : public testing::TestWithParam<bool> {
  protected:
    bool crossing() const { return GetParam(); }

    TemporaryFolder source;
    TemporaryFolder target = crossing() ? TemporaryFolder(otherFileSystem()) : TemporaryFolder();
};

INSTANTIATE_TEST_SUITE_P(FileSystems, MoveItem, testing::Bool(),
                         [](const auto& info) { return info.param ? "Between" : "Within"; });

TEST_P(MoveItem, TheFoldersOfThisTestAreWhereItSays) {
    EXPECT_EQ(statusOf(source.path()).st_dev != statusOf(target.path()).st_dev, crossing());
}

TEST_P(MoveItem, MovesAFile) {
    source.makeFile("a.txt", "text");
    const auto path = moveItem(source / "a.txt", at(target / "a.txt"));
    ASSERT_TRUE(path) << path.error().description;
    EXPECT_EQ(*path, target / "a.txt");
    EXPECT_EQ(TemporaryFolder::read(*path), "text");
    EXPECT_THAT(namesIn(source.path()), IsEmpty());
    EXPECT_THAT(namesIn(target.path()), ElementsAre("a.txt"));
}

TEST_P(MoveItem, MovesALargeFile) {
    std::string content(3'000'001, 'x');
    for (std::size_t i = 0; i < content.size(); i += 97) content[i] = static_cast<char>(i);
    source.makeFile("large", content);
    ASSERT_TRUE(moveItem(source / "large", at(target / "large")));
    EXPECT_EQ(TemporaryFolder::read(target / "large"), content);
    EXPECT_THAT(namesIn(source.path()), IsEmpty());
}

TEST_P(MoveItem, RefusesATakenNameAndChangesNothing) {
    source.makeFile("a.txt", "new");
    target.makeFile("a.txt", "old");
    const auto path = moveItem(source / "a.txt", at(target / "a.txt"));
    ASSERT_FALSE(path);
    EXPECT_EQ(path.error().code, std::errc::file_exists);
    EXPECT_EQ(TemporaryFolder::read(source / "a.txt"), "new");
    EXPECT_EQ(TemporaryFolder::read(target / "a.txt"), "old");
    EXPECT_THAT(namesIn(target.path()), ElementsAre("a.txt"));
}

TEST_P(MoveItem, TriesTheNextNamesWhileTheyAreTaken) {
    source.makeFile("a", "new");
    target.makeFile("a", "old");
    target.makeFolder("a 1");
    std::filesystem::create_symlink("nowhere", target / "a 2");
    const auto path = moveItem(source / "a", numbered(target / "a"));
    ASSERT_TRUE(path);
    EXPECT_EQ(*path, target / "a 3");
    EXPECT_EQ(TemporaryFolder::read(*path), "new");
    EXPECT_EQ(TemporaryFolder::read(target / "a"), "old");
    EXPECT_THAT(namesIn(target.path()), ElementsAre("a", "a 1", "a 2", "a 3"));
    EXPECT_THAT(namesIn(source.path()), IsEmpty());
}

TEST_P(MoveItem, NeverOverwritesANameTakenAtTheLastMoment) {
    source.makeFile("a", "ours");
    target.makeFile("a", "old");
    int asked = 0;
    const auto path = moveItem(source / "a", {target / "a",
                                              [&] {
                                                  const std::string name = "a" + std::to_string(++asked);
                                                  if (asked < 3) target.makeFile(name, "theirs");
                                                  return target / name;
                                              },
                                              {},
                                              {}});
    ASSERT_TRUE(path);
    EXPECT_EQ(*path, target / "a3");
    EXPECT_EQ(TemporaryFolder::read(target / "a1"), "theirs");
    EXPECT_EQ(TemporaryFolder::read(target / "a2"), "theirs");
    EXPECT_EQ(TemporaryFolder::read(target / "a3"), "ours");
}

TEST_P(MoveItem, NeverMergesAFolderIntoATakenOne) {
    source.makeFile(source.makeFolder("d").substr(source.path().size() + 1) + "/mine", "1");
    target.makeFolder("d");
    target.makeFile("d/theirs", "2");
    const auto path = moveItem(source / "d", numbered(target / "d"));
    ASSERT_TRUE(path);
    EXPECT_EQ(*path, target / "d 1");
    EXPECT_THAT(namesIn(target / "d"), ElementsAre("theirs"));
    EXPECT_THAT(namesIn(target / "d 1"), ElementsAre("mine"));
}

TEST_P(MoveItem, NeverReplacesAnEmptyFolder) {
    source.makeFolder("d");
    source.makeFile("d/x");
    target.makeFolder("d");
    EXPECT_FALSE(moveItem(source / "d", at(target / "d")));
    EXPECT_THAT(namesIn(target / "d"), IsEmpty());
    EXPECT_THAT(namesIn(source / "d"), ElementsAre("x"));
}

TEST_P(MoveItem, TakesNamesOfAnyBytes) {
    const Names names = {"new\nline", "-dash", std::string(255, 'n'), "\xff\xfe invalid", " ", "...", "資料"};
    for (const std::string& name : names) {
        source.makeFile(name, name);
        const auto path = moveItem(source / name, at(target / name));
        ASSERT_TRUE(path) << path.error().description;
        EXPECT_EQ(TemporaryFolder::read(target / name), name);
    }
    EXPECT_THAT(namesIn(source.path()), IsEmpty());
    EXPECT_THAT(namesIn(target.path()), testing::UnorderedElementsAreArray(names));
}

TEST_P(MoveItem, ANameThatGrowsTooLongIsAnErrorAndChangesNothing) {
    const std::string name(255, 'n');
    source.makeFile(name, "new");
    target.makeFile(name, "old");
    const auto path = moveItem(source / name, numbered(target / name));
    ASSERT_FALSE(path);
    EXPECT_THAT(path.error().description, HasSubstr("File name too long"));
    EXPECT_EQ(TemporaryFolder::read(source / name), "new");
    EXPECT_THAT(namesIn(target.path()), ElementsAre(name));
}

TEST_P(MoveItem, MovesASymbolicLinkItself) {
    source.makeFile("file", "content");
    std::filesystem::create_symlink("file", source / "link");
    setTimes(source / "link", {11, 12}, {1'000'000'000, 123'456'789});
    ASSERT_TRUE(moveItem(source / "link", at(target / "link")));
    EXPECT_EQ(std::filesystem::read_symlink(target / "link"), "file");
    EXPECT_EQ(statusOf(target / "link").st_mtim.tv_nsec, 123'456'789);
    EXPECT_THAT(namesIn(source.path()), ElementsAre("file"));
}

TEST_P(MoveItem, MovesAWholeFolder) {
    source.makeFolder("tree/sub/empty");
    source.makeFile("tree/sub/file", "deep");
    source.makeFile("tree/top", "");
    std::filesystem::create_symlink("no/such", source / "tree/dangling");
    std::filesystem::create_directory_symlink("sub", source / "tree/link to folder");
    ASSERT_TRUE(moveItem(source / "tree", at(target / "tree")));
    EXPECT_THAT(namesIn(source.path()), IsEmpty());
    EXPECT_THAT(namesIn(target.path()), ElementsAre("tree"));
    EXPECT_THAT(namesIn(target / "tree"), ElementsAre("dangling", "link to folder", "sub", "top"));
    EXPECT_THAT(namesIn(target / "tree/sub"), ElementsAre("empty", "file"));
    EXPECT_EQ(TemporaryFolder::read(target / "tree/sub/file"), "deep");
    EXPECT_TRUE(std::filesystem::is_symlink(target / "tree/link to folder"));
}

TEST_P(MoveItem, MovesAFolderWithReadOnlyFoldersInIt) {
    source.makeFolder("tree/locked");
    source.makeFile("tree/locked/file", "x");
    setMode(source / "tree/locked", 0555);
    setMode(source.path(), 0777);
    setMode(target.path(), 0777);
    for (const char* path : {"tree", "tree/locked", "tree/locked/file"})
        if (geteuid() == 0) require(chown((source / path).c_str(), 65534, 65534) == 0, path);
    {
        const OrdinaryUser user;
        const auto path = moveItem(source / "tree", at(target / "tree"));
        ASSERT_TRUE(path) << path.error().description;
    }
    EXPECT_THAT(namesIn(source.path()), IsEmpty());
    EXPECT_EQ(statusOf(target / "tree/locked").st_mode & 07777U, 0555U);
    EXPECT_EQ(TemporaryFolder::read(target / "tree/locked/file"), "x");
    setMode(target / "tree/locked", 0755);
}

TEST_P(MoveItem, RefusesAFolderIntoItself) {
    source.makeFolder("tree/sub");
    for (const char* inside : {"tree/tree", "tree/sub/tree"}) {
        const auto path = moveItem(source / "tree", at(source / inside));
        ASSERT_FALSE(path);
        EXPECT_THAT(path.error().description, AllOf(HasSubstr("into itself"), HasSubstr(source / "tree")));
    }
    EXPECT_THAT(namesIn(source / "tree"), ElementsAre("sub"));
    EXPECT_THAT(namesIn(source / "tree/sub"), IsEmpty());
}

TEST_P(MoveItem, SaysWhenTheTargetFolderIsGone) {
    source.makeFile("a");
    const auto path = moveItem(source / "a", at(target / "gone/a"));
    ASSERT_FALSE(path);
    EXPECT_EQ(path.error().description,
              "Could not open the folder \"" + (target / "gone") + "\": No such file or directory");
    EXPECT_THAT(namesIn(source.path()), ElementsAre("a"));
}

TEST_P(MoveItem, SaysWhenTheSourceIsGone) {
    const auto path = moveItem(source / "a", at(target / "a"));
    ASSERT_FALSE(path);
    EXPECT_EQ(path.error().description,
              "Could not move \"" + (source / "a") + "\": No such file or directory");
    EXPECT_THAT(namesIn(target.path()), IsEmpty());
}

TEST_P(MoveItem, LeavesNothingInAFolderThatMayNotBeWritten) {
    source.makeFile("a", "x");
    setMode(source.path(), 0777);
    setMode(source / "a", 0666);
    setMode(target.path(), 0555);
    {
        const OrdinaryUser user;
        const auto path = moveItem(source / "a", at(target / "a"));
        ASSERT_FALSE(path);
        EXPECT_THAT(path.error().description, HasSubstr("Permission denied"));
    }
    EXPECT_EQ(TemporaryFolder::read(source / "a"), "x");
    EXPECT_THAT(namesIn(target.path()), IsEmpty());
    setMode(target.path(), 0755);
}

TEST_P(MoveItem, LeavesNoCopyWhenTheSourceFolderMayNotBeWritten) {
    source.makeFile("a", "x");
    setMode(source / "a", 0644);
    setMode(source.path(), 0555);
    setMode(target.path(), 0777);
    {
        const OrdinaryUser user;
        EXPECT_FALSE(moveItem(source / "a", at(target / "a")));
    }
    EXPECT_THAT(namesIn(source.path()), ElementsAre("a"));
    EXPECT_THAT(namesIn(target.path()), IsEmpty());
    setMode(source.path(), 0755);
}

TEST_P(MoveItem, DropsIntoAFolderThatCannotBeListed) {
    source.makeFile("a", "x");
    setMode(source / "a", 0644);
    setMode(source.path(), 0777);
    if (geteuid() == 0) require(chown((source / "a").c_str(), 65534, 65534) == 0, "chown");
    setMode(target.path(), 0333);
    {
        const OrdinaryUser user;
        const auto path = moveItem(source / "a", at(target / "a"));
        ASSERT_TRUE(path) << path.error().description;
    }
    setMode(target.path(), 0755);
    EXPECT_THAT(namesIn(target.path()), ElementsAre("a"));
    EXPECT_THAT(namesIn(source.path()), IsEmpty());
}

TEST_P(MoveItem, TellsTheReservationsOfTheNameThatItGot) {
    source.makeFile("a");
    target.makeFile("a");
    Names reserved;
    Destination destination = numbered(target / "a");
    destination.reserve = [&](const std::string& name) {
        reserved.push_back(name);
        return name == "a 1" ? std::make_error_code(std::errc::file_exists) : std::error_code();
    };
    destination.withdraw = [&](const std::string& name) { std::erase(reserved, name); };
    const auto path = moveItem(source / "a", destination);
    ASSERT_TRUE(path);
    EXPECT_EQ(*path, target / "a 2");
    // Refused, hence not withdrawn; the one of the taken name was.
    EXPECT_THAT(reserved, ElementsAre("a 1", "a 2"));
}

TEST(MoveItemWithin, NumbersAFileMovedToWhereItLies) {
    const TemporaryFolder folder;
    folder.makeFile("a", "x");
    const auto path = moveItem(folder / "a", numbered(folder / "a"));
    ASSERT_TRUE(path);
    EXPECT_EQ(*path, folder / "a 1");
    EXPECT_THAT(namesIn(folder.path()), ElementsAre("a 1"));
}

TEST(MoveItemWithin, KeepsTheInode) {
    const TemporaryFolder folder;
    folder.makeFile("a");
    folder.makeFolder("d");
    const ino_t inode = statusOf(folder / "a").st_ino;
    ASSERT_TRUE(moveItem(folder / "a", at(folder / "d/a")));
    EXPECT_EQ(statusOf(folder / "d/a").st_ino, inode);
}

TEST(MoveItemWithin, MovesAPipe) {
    const TemporaryFolder folder;
    folder.makeFolder("d");
    require(mkfifo((folder / "pipe").c_str(), 0600) == 0, "mkfifo");
    EXPECT_TRUE(moveItem(folder / "pipe", at(folder / "d/pipe")));
    EXPECT_TRUE(S_ISFIFO(statusOf(folder / "d/pipe").st_mode));
}

class MoveItemBetween : public testing::Test {
  protected:
    /// A destination that is taken at first; `action` runs when the next name is asked for, after the
    /// copying.
    Destination afterCopying(const std::string& name, const std::function<void()>& action) {
        target.makeFile(name, "taken");
        return {target / name,
                [this, name, action] {
                    action();
                    return target / (name + " 1");
                },
                {},
                {}};
    }

    TemporaryFolder source;
    TemporaryFolder target{otherFileSystem()};
};

TEST_F(MoveItemBetween, RefusesPipesAndSocketsAndLeavesNothing) {
    source.makeFolder("tree");
    source.makeFile("tree/a");
    require(mkfifo((source / "tree/pipe").c_str(), 0600) == 0, "mkfifo");
    const FileDescriptor listener(socket(AF_UNIX, SOCK_STREAM, 0));
    sockaddr_un address{AF_UNIX, {}};
    (source / "socket").copy(address.sun_path, sizeof address.sun_path - 1);
    require(bind(listener.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0, "bind");
    for (const char* name : {"tree", "socket"}) {
        const auto path = moveItem(source / name, at(target / name));
        ASSERT_FALSE(path);
        EXPECT_THAT(path.error().description,
                    HasSubstr("Could not copy the special file \"" + (source / name)));
    }
    EXPECT_THAT(namesIn(source / "tree"), ElementsAre("a", "pipe"));
    EXPECT_THAT(namesIn(source.path()), ElementsAre("socket", "tree"));
    EXPECT_THAT(namesIn(target.path()), IsEmpty());
}

TEST_F(MoveItemBetween, CopiesOnlyOnceHoweverManyNamesAreTaken) {
    source.makeFile("a", "x");
    ino_t staged = 0;
    const auto path =
        moveItem(source / "a", afterCopying("a", [&] {
                     const Names names = namesIn(target.path());
                     ASSERT_EQ(names.size(), 2U);
                     EXPECT_THAT(names[0], testing::MatchesRegex("\\.brimwick-[0-9]+-[0-9a-f]+\\.part"));
                     staged = statusOf(target / names[0]).st_ino;
                 }));
    ASSERT_TRUE(path);
    EXPECT_EQ(statusOf(*path).st_ino, staged);
    EXPECT_THAT(namesIn(target.path()), ElementsAre("a", "a 1"));
}

TEST_F(MoveItemBetween, KeepsBothWhenTheSourceWasEditedMeanwhile) {
    source.makeFile("a", "before");
    const auto path = moveItem(source / "a", afterCopying("a", [&] { source.makeFile("a", "edited"); }));
    ASSERT_FALSE(path);
    EXPECT_THAT(path.error().description, AllOf(HasSubstr("kept"), HasSubstr(source / "a")));
    EXPECT_EQ(TemporaryFolder::read(source / "a"), "edited");
    EXPECT_EQ(TemporaryFolder::read(target / "a 1"), "before");
    EXPECT_THAT(namesIn(source.path()), ElementsAre("a"));
}

TEST_F(MoveItemBetween, KeepsAFolderIntoWhichSomethingWasPutMeanwhile) {
    source.makeFolder("d/sub");
    source.makeFile("d/sub/old", "1");
    const auto path = moveItem(source / "d", afterCopying("d", [&] { source.makeFile("d/sub/new", "2"); }));
    ASSERT_FALSE(path);
    EXPECT_THAT(namesIn(source.path()), ElementsAre("d"));
    EXPECT_THAT(namesIn(source / "d/sub"), ElementsAre("new", "old"));
    EXPECT_THAT(namesIn(target / "d 1/sub"), ElementsAre("old"));
}

TEST_F(MoveItemBetween, KeepsAFileInAFolderReplacedByAnotherOfTheSameSizeAndTime) {
    source.makeFolder("d");
    source.makeFile("d/a", "one");
    setTimes(source / "d/a", {5, 6}, {7, 8});
    const auto path = moveItem(source / "d", afterCopying("d", [&] {
                                   source.makeFile("other", "two");
                                   setTimes(source / "other", {5, 6}, {7, 8});
                                   std::filesystem::rename(source / "other", source / "d/a");
                               }));
    ASSERT_FALSE(path);
    EXPECT_EQ(TemporaryFolder::read(source / "d/a"), "two");
}

TEST_F(MoveItemBetween, KeepsAFileThatAnotherProgramHasOpenForWriting) {
    source.makeFolder("d");
    source.makeFile("d/a", "x");
    const FileDescriptor writer(open((source / "d/a").c_str(), O_WRONLY | O_CLOEXEC));
    const auto path = moveItem(source / "d", at(target / "d"));
    ASSERT_FALSE(path);
    EXPECT_THAT(path.error().description, HasSubstr("kept"));
    EXPECT_EQ(TemporaryFolder::read(source / "d/a"), "x");
    EXPECT_THAT(namesIn(source.path()), ElementsAre("d"));
}

TEST_F(MoveItemBetween, MovesAFileThatAnotherProgramReads) {
    source.makeFile("a", "x");
    const FileDescriptor reader(open((source / "a").c_str(), O_RDONLY | O_CLOEXEC));
    EXPECT_TRUE(moveItem(source / "a", at(target / "a")));
    EXPECT_THAT(namesIn(source.path()), IsEmpty());
}

TEST_F(MoveItemBetween, KeepsModeOwnerAndTimesToTheNanosecond) {
    source.makeFolder("d");
    source.makeFile("d/f", "x");
    setMode(source / "d/f", 04751);
    if (geteuid() == 0) {
        require(chown((source / "d/f").c_str(), 1234, 4321) == 0, "chown");
        setMode(source / "d/f", 04751);
    }
    setTimes(source / "d/f", {1'000'000'001, 111'111'111}, {1'000'000'002, 222'222'222});
    setMode(source / "d", 0710);
    setTimes(source / "d", {1'000'000'003, 333'333'333}, {1'000'000'004, 444'444'444});
    const struct stat before = statusOf(source / "d/f");
    ASSERT_TRUE(moveItem(source / "d", at(target / "d")));
    const struct stat folder = statusOf(target / "d");
    EXPECT_EQ(folder.st_mode & 07777U, 0710U);
    EXPECT_EQ(folder.st_mtim.tv_sec, 1'000'000'004);
    EXPECT_EQ(folder.st_mtim.tv_nsec, 444'444'444);
    const struct stat file = statusOf(target / "d/f");
    EXPECT_EQ(file.st_mode & 07777U, 04751U);
    EXPECT_EQ(file.st_uid, before.st_uid);
    EXPECT_EQ(file.st_gid, before.st_gid);
    EXPECT_EQ(file.st_atim.tv_nsec, 111'111'111);
    EXPECT_EQ(file.st_mtim.tv_sec, 1'000'000'002);
    EXPECT_EQ(file.st_mtim.tv_nsec, 222'222'222);
}

TEST_F(MoveItemBetween, KeepsHolesAndHardLinks) {
    source.makeFolder("d/sub");
    source.makeFile("d/sparse", "");
    require(truncate((source / "d/sparse").c_str(), 16 << 20) == 0, "truncate");
    {
        std::fstream file(source / "d/sparse", std::ios::in | std::ios::out | std::ios::binary);
        file.seekp(5'000'000);
        file << "data";
    }
    source.makeFile("d/one", "linked");
    std::filesystem::create_hard_link(source / "d/one", source / "d/sub/two");
    ASSERT_TRUE(moveItem(source / "d", at(target / "d")));
    EXPECT_EQ(statusOf(target / "d/sparse").st_size, 16 << 20);
    EXPECT_LT(statusOf(target / "d/sparse").st_blocks * 512, 1 << 20);
    EXPECT_EQ(TemporaryFolder::read(target / "d/sparse").substr(5'000'000, 5), std::string("data\0", 5));
    EXPECT_EQ(statusOf(target / "d/one").st_ino, statusOf(target / "d/sub/two").st_ino);
    EXPECT_EQ(TemporaryFolder::read(target / "d/sub/two"), "linked");
}

} // namespace

} // namespace brimwick
