#include "fakes/OrdinaryUser.h"
#include "fakes/TemporaryFolder.h"
#include "model/WholeFile.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

namespace brimwick {
namespace {

namespace fs = std::filesystem;

fs::perms permissionsOf(const std::string& path) {
    return fs::status(path).permissions();
}

std::ptrdiff_t numberOfItems(const TemporaryFolder& folder) {
    return std::distance(fs::directory_iterator(folder.path()), fs::directory_iterator());
}

TEST(WholeFile, WritesAndReadsBytes) {
    const TemporaryFolder folder;
    const std::string content("a\0b\xFF", 4);
    ASSERT_TRUE(writeWholeFile(folder / "file", content));
    EXPECT_EQ(readWholeFile(folder / "file", 4).value(), content);
    EXPECT_EQ(numberOfItems(folder), 1);
}

TEST(WholeFile, ReadsNoMoreThanTheLimit) {
    const TemporaryFolder folder;
    folder.makeFile("file", std::string(200000, 'x'));
    EXPECT_EQ(readWholeFile(folder / "file", 200000).value().size(), 200000u);
    EXPECT_EQ(readWholeFile(folder / "file", 199999).error(), "too large");
}

TEST(WholeFile, StopsReadingAFileThatHidesItsSize) {
    EXPECT_EQ(readWholeFile("/proc/self/maps", 100).error(), "too large");
}

TEST(WholeFile, MakesANewFileItsOwnersAlone) {
    const TemporaryFolder folder;
    ASSERT_TRUE(writeWholeFile(folder / "file", "new"));
    EXPECT_EQ(permissionsOf(folder / "file"), fs::perms(0600));
}

TEST(WholeFile, KeepsThePermissionsOfTheOldFile) {
    const TemporaryFolder folder;
    fs::permissions(folder.makeFile("file"), fs::perms(0644));
    ASSERT_TRUE(writeWholeFile(folder / "file", "new"));
    EXPECT_EQ(permissionsOf(folder / "file"), fs::perms(0644));
    EXPECT_EQ(TemporaryFolder::read(folder / "file"), "new");
}

TEST(WholeFile, ReplacesTheFileInsteadOfWritingIntoIt) {
    const TemporaryFolder folder;
    folder.makeFile("file", "old");
    fs::create_hard_link(folder / "file", folder / "other");
    ASSERT_TRUE(writeWholeFile(folder / "file", "new"));
    EXPECT_EQ(TemporaryFolder::read(folder / "other"), "old");
}

TEST(WholeFile, ReplacesWhatSymbolicLinksLeadTo) {
    const TemporaryFolder folder;
    folder.makeFolder("elsewhere");
    folder.makeFile("elsewhere/target", "old");
    fs::create_symlink("target", folder / "elsewhere/second");
    fs::create_symlink("elsewhere/second", folder / "first");
    ASSERT_TRUE(writeWholeFile(folder / "first", "new"));
    EXPECT_TRUE(fs::is_symlink(folder / "first"));
    EXPECT_TRUE(fs::is_symlink(folder / "elsewhere/second"));
    EXPECT_EQ(TemporaryFolder::read(folder / "elsewhere/target"), "new");
}

TEST(WholeFile, MakesTheFileThatADanglingLinkLeadsTo) {
    const TemporaryFolder folder;
    folder.makeFolder("elsewhere");
    fs::create_symlink(folder / "elsewhere/target", folder / "link");
    ASSERT_TRUE(writeWholeFile(folder / "link", "new"));
    EXPECT_EQ(TemporaryFolder::read(folder / "elsewhere/target"), "new");
}

TEST(WholeFile, FollowsNoLinksThatGoInACircle) {
    const TemporaryFolder folder;
    fs::create_symlink("b", folder / "a");
    fs::create_symlink("a", folder / "b");
    EXPECT_EQ(endOfSymbolicLinks(folder / "a"), folder / "a");
}

TEST(WholeFile, LeavesAFolderThatHasTheName) {
    const TemporaryFolder folder;
    folder.makeFolder("file");
    folder.makeFile("file/inside", "kept");
    EXPECT_FALSE(writeWholeFile(folder / "file", "new"));
    EXPECT_EQ(TemporaryFolder::read(folder / "file/inside"), "kept");
    EXPECT_EQ(numberOfItems(folder), 1);
}

TEST(WholeFile, ChangesNothingInAFolderThatCannotBeWritten) {
    const OrdinaryUser user;
    const TemporaryFolder folder;
    folder.makeFile("file", "old");
    ASSERT_EQ(chmod(folder.path().c_str(), 0500), 0);
    EXPECT_EQ(writeWholeFile(folder / "file", "new").error(), "Permission denied");
    EXPECT_FALSE(writeWholeFile(folder / "another", "new"));
    ASSERT_EQ(chmod(folder.path().c_str(), 0700), 0);
    EXPECT_EQ(TemporaryFolder::read(folder / "file"), "old");
    EXPECT_EQ(numberOfItems(folder), 1);
}

TEST(WholeFile, RefusesAFolderThatIsMissing) {
    EXPECT_EQ(writeWholeFile("/missing/folder/file", "new").error(), "No such file or directory");
}

} // namespace
} // namespace brimwick
