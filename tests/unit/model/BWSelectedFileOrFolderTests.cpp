#include "fakes/OrdinaryUser.h"
#include "fakes/TemporaryFolder.h"
#include "model/BWSelectedFileOrFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

namespace brimwick {
namespace {

using Entry = BWSelectedFileOrFolder;

const Icon emptyTrash = {Icon::Source::Resource, "TrashIcon"};
const Icon fullTrash = {Icon::Source::Resource, "FullTrashIcon"};

Icon fileIcon(const std::string& path) {
    return {Icon::Source::File, path};
}

TEST(SelectedFileOrFolder, StartsEmpty) {
    const Entry entry;
    EXPECT_EQ(entry.path(), "");
    EXPECT_EQ(entry.name(), "");
    EXPECT_EQ(entry.url(), std::nullopt);
    EXPECT_EQ(entry.icon(), std::nullopt);
    EXPECT_EQ(entry.trashIcon(), emptyTrash);
    EXPECT_EQ(entry.fullTrashIcon(), fullTrash);
    EXPECT_FALSE(entry.isTrashFolder());
}

TEST(SelectedFileOrFolder, TakesPathNameAndIconFromAUrl) {
    const TemporaryFolder root;
    const std::string path = root.makeFile("a b");
    const Entry entry = Entry::fileOrFolderWithURL("file://" + root.path() + "/a%20b");
    EXPECT_EQ(entry.path(), path);
    EXPECT_EQ(entry.url(), "file://" + root.path() + "/a%20b");
    EXPECT_EQ(entry.name(), "a b");
    EXPECT_EQ(entry.icon(), fileIcon(path));
}

TEST(SelectedFileOrFolder, MarksThePathOfARegularFileAsAFoldersUrl) {
    const TemporaryFolder root;
    const Entry entry = Entry::fileOrFolderWithPath(root.makeFile("file"));
    EXPECT_EQ(entry.url(), "file://" + root.path() + "/file/");
    EXPECT_EQ(entry.path(), root / "file");
    EXPECT_EQ(entry.name(), "file");
}

TEST(SelectedFileOrFolder, LeavesTheSlashesAtTheEndOfAPathOut) {
    const TemporaryFolder root;
    const Entry entry = Entry::fileOrFolderWithPath(root.makeFolder("folder") + "//");
    EXPECT_EQ(entry.path(), root / "folder");
    EXPECT_EQ(entry.name(), "folder");
    EXPECT_EQ(entry.icon(), fileIcon(root / "folder"));
}

TEST(SelectedFileOrFolder, HasNoNameWhenNothingLiesAtItsPath) {
    const TemporaryFolder root;
    const Entry entry = Entry::fileOrFolderWithPath(root / "missing");
    EXPECT_EQ(entry.name(), std::nullopt);
    EXPECT_EQ(entry.path(), root / "missing");
    EXPECT_EQ(entry.url(), "file://" + root.path() + "/missing/");
    EXPECT_EQ(entry.icon(), fileIcon(root / "missing"));
    EXPECT_FALSE(entry.isTrashFolder());
}

TEST(SelectedFileOrFolder, NamesADanglingLinkByTheLink) {
    const TemporaryFolder root;
    std::filesystem::create_symlink("nowhere", root / "link");
    EXPECT_EQ(Entry::fileOrFolderWithPath(root / "link").name(), "link");
}

TEST(SelectedFileOrFolder, NamesTheRootBySlash) {
    const Entry entry = Entry::fileOrFolderWithPath("/");
    EXPECT_EQ(entry.name(), "/");
    EXPECT_EQ(entry.url(), "file:///");
    EXPECT_EQ(entry.directoryPath(), "/");
    EXPECT_EQ(entry.parentFolder().path(), "/");
}

TEST(SelectedFileOrFolder, KeepsNamesThatAreNoTextByteForByte) {
    const TemporaryFolder root;
    const std::string name = "\xFF\xFE\n\x01 %41";
    const Entry entry = Entry::fileOrFolderWithPath(root.makeFolder(name));
    EXPECT_EQ(entry.name(), name);
    EXPECT_EQ(Entry::fileOrFolderWithURL(entry.url().value()).path(), root / name);
}

TEST(SelectedFileOrFolder, HasNoNameForAPathWithANulByteOrARelativePath) {
    const TemporaryFolder root;
    const std::string cutPath = root.makeFolder("cut");
    EXPECT_EQ(Entry::fileOrFolderWithPath(cutPath + std::string(1, '\0') + "tail").name(), std::nullopt);
    EXPECT_EQ(Entry::fileOrFolderWithPath(".").name(), std::nullopt);
    EXPECT_EQ(Entry::fileOrFolderWithPath("").path(), "");
}

TEST(SelectedFileOrFolder, HasAnEmptyPathForAUrlOfNoFile) {
    const Entry entry = Entry::fileOrFolderWithURL("http://localhost/tmp");
    EXPECT_EQ(entry.path(), "");
    EXPECT_EQ(entry.name(), std::nullopt);
}

TEST(SelectedFileOrFolder, LooksItsNameUpAgainWhenCloned) {
    const TemporaryFolder root;
    Entry entry = Entry::fileOrFolderWithPath(root.makeFolder("folder"));
    entry.setName("renamed");
    entry.setIcon(Icon{Icon::Source::Resource, "Other"});
    EXPECT_EQ(entry.clone().name(), "folder");
    EXPECT_EQ(entry.clone().icon(), fileIcon(root / "folder"));
    std::filesystem::remove(root / "folder");
    EXPECT_EQ(entry.clone().name(), std::nullopt);
}

TEST(SelectedFileOrFolder, KeepsUrlAndIconWhenItGetsAnotherPath) {
    const TemporaryFolder root;
    Entry entry = Entry::fileOrFolderWithPath(root.makeFolder("folder"));
    entry.setPath(root / "other");
    EXPECT_EQ(entry.path(), root / "other");
    EXPECT_EQ(entry.url(), "file://" + root.path() + "/folder/");
    EXPECT_EQ(entry.icon(), fileIcon(root / "folder"));
    entry.setUrl(std::nullopt);
    EXPECT_EQ(entry.url(), std::nullopt);
}

TEST(SelectedFileOrFolder, LooksItsParentFolderUp) {
    const TemporaryFolder root;
    root.makeFolder("a/b/c");
    const Entry entry = Entry::fileOrFolderWithPath(root / "a/b/c");
    EXPECT_EQ(entry.directoryPath(), root / "a/b");
    const Entry parent = entry.parentFolder();
    EXPECT_EQ(parent.path(), root / "a/b");
    EXPECT_EQ(parent.name(), "b");
    EXPECT_EQ(parent.icon(), fileIcon(root / "a/b"));
    EXPECT_EQ(parent.url(), "file://" + root.path() + "/a/b/");
}

TEST(SelectedFileOrFolder, ShowsTheTrashFullAsSoonAsItHoldsOneItemAndEmptyAgainAfter) {
    const TemporaryFolder home;
    const Entry trash = Entry::fileOrFolderWithPath(home.makeFolder(".Trash"));
    EXPECT_TRUE(trash.isTrashFolder());
    EXPECT_EQ(trash.name(), "Trash");
    EXPECT_EQ(trash.icon(), emptyTrash);
    home.makeFile(".Trash/.hidden");
    EXPECT_EQ(trash.icon(), fullTrash);
    std::filesystem::remove(home / ".Trash/.hidden");
    EXPECT_EQ(trash.icon(), emptyTrash);
}

TEST(SelectedFileOrFolder, ShowsATrashThatCannotBeReadAsEmpty) {
    const OrdinaryUser user;
    const TemporaryFolder home;
    const std::string path = home.makeFolder(".Trash");
    home.makeFile(".Trash/item");
    const Entry trash = Entry::fileOrFolderWithPath(path);
    ASSERT_EQ(chmod(path.c_str(), 0), 0);
    EXPECT_EQ(trash.icon(), emptyTrash);
    ASSERT_EQ(chmod(path.c_str(), 0700), 0);
    EXPECT_EQ(trash.icon(), fullTrash);
    std::filesystem::remove_all(path);
    EXPECT_EQ(trash.icon(), emptyTrash);
}

TEST(SelectedFileOrFolder, FollowsALinkThatIsTheTrash) {
    const TemporaryFolder home;
    home.makeFolder("real");
    std::filesystem::create_directory_symlink("real", home / ".Trash");
    const Entry trash = Entry::fileOrFolderWithPath(home / ".Trash");
    EXPECT_EQ(trash.icon(), emptyTrash);
    home.makeFile("real/item");
    EXPECT_EQ(trash.icon(), fullTrash);
}

TEST(SelectedFileOrFolder, IgnoresAnIconSetOnTheTrash) {
    const TemporaryFolder home;
    Entry trash = Entry::fileOrFolderWithPath(home.makeFolder(".Trash"));
    trash.setIcon(Icon{Icon::Source::Resource, "Other"});
    EXPECT_EQ(trash.icon(), emptyTrash);
    trash.setName("ordinary");
    EXPECT_EQ(trash.icon(), emptyTrash);
}

TEST(SelectedFileOrFolder, TakesTheFilesIconAlsoForTheTrashWhenMade) {
    const TemporaryFolder home;
    Entry trash = Entry::fileOrFolderWithPath(home.makeFolder(".Trash"));
    trash.setName("ordinary");
    EXPECT_EQ(trash.icon(), fileIcon(home / ".Trash"));
}

TEST(SelectedFileOrFolder, ShowsTheTrashWithTheImagesThatItWasGiven) {
    const TemporaryFolder home;
    Entry trash = Entry::fileOrFolderWithPath(home.makeFolder(".Trash"));
    trash.setTrashIcon(std::nullopt);
    trash.setFullTrashIcon(Icon{Icon::Source::Resource, "Bursting"});
    EXPECT_EQ(trash.icon(), std::nullopt);
    home.makeFile(".Trash/item");
    EXPECT_EQ(trash.icon(), (Icon{Icon::Source::Resource, "Bursting"}));
}

TEST(SelectedFileOrFolder, IsOrdinaryWhenCalledTrashWithoutTheDot) {
    const TemporaryFolder root;
    for (const char* name : {"Trash", ".trash", ".Trash-1000"}) {
        const Entry entry = Entry::fileOrFolderWithPath(root.makeFolder(name));
        EXPECT_FALSE(entry.isTrashFolder());
        EXPECT_EQ(entry.name(), name);
        EXPECT_EQ(entry.icon(), fileIcon(root / name));
    }
}

TEST(SelectedFileOrFolder, IgnoresItsOwnDisplayNameAsANewName) {
    const TemporaryFolder home;
    Entry trash = Entry::fileOrFolderWithPath(home.makeFolder(".Trash"));
    trash.setName("Trash");
    EXPECT_TRUE(trash.isTrashFolder());
    trash.setName(".Trash");
    EXPECT_TRUE(trash.isTrashFolder());
    trash.setName("Rubbish");
    EXPECT_FALSE(trash.isTrashFolder());
    EXPECT_EQ(trash.name(), "Rubbish");
    trash.setName("Trash");
    EXPECT_EQ(trash.name(), "Trash");
    EXPECT_FALSE(trash.isTrashFolder());
}

TEST(SelectedFileOrFolder, CanLoseItsName) {
    Entry entry;
    entry.setName(std::nullopt);
    EXPECT_EQ(entry.name(), std::nullopt);
    entry.setName(std::nullopt);
    EXPECT_EQ(entry.name(), std::nullopt);
    entry.setName("");
    EXPECT_EQ(entry.name(), "");
}

TEST(SelectedFileOrFolder, RefusesToBeNamelessWithOrWithoutAPlaceForTheError) {
    EXPECT_FALSE(Entry::validateNameError(std::nullopt, nullptr));
    std::string error;
    EXPECT_FALSE(Entry::validateNameError(std::nullopt, &error));
    EXPECT_EQ(error, "name may not be null");
}

TEST(SelectedFileOrFolder, AcceptsAnyOtherName) {
    std::string error = "untouched";
    EXPECT_TRUE(Entry::validateNameError("", &error));
    EXPECT_TRUE(Entry::validateNameError("a name", &error));
    EXPECT_EQ(error, "untouched");
}

} // namespace
} // namespace brimwick
