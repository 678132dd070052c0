#include "fakes/TemporaryFolder.h"
#include "model/IndexedFolderList.h"

#include <gmock/gmock.h>

namespace brimwick {

namespace {

std::vector<BWSelectedFileOrFolder> listOf(const std::vector<std::string>& paths) {
    std::vector<BWSelectedFileOrFolder> folders;
    for (const std::string& path : paths)
        folders.push_back(BWSelectedFileOrFolder::fileOrFolderWithPath(path));
    return folders;
}

TEST(IndexedFolderList, CoversWhateverContainsAPathOfItAnywhere) {
    const auto folders = listOf({"/home/u/Doc"});
    for (const char* path : {"/home/u/Doc", "/home/u/Doc/a", "/home/u/Documents", "/mnt/home/u/Doc"})
        EXPECT_TRUE(IndexedFolderList::coversPath(folders, path)) << path;
    for (const char* path : {"/home/u", "/home/u/Do", "/home/u/doc", ""})
        EXPECT_FALSE(IndexedFolderList::coversPath(folders, path)) << path;
}

TEST(IndexedFolderList, CoversNothingByAnEmptyPathOrNone) {
    EXPECT_FALSE(IndexedFolderList::coversPath({}, "/home/u"));
    EXPECT_FALSE(IndexedFolderList::coversPath(listOf({""}), "/home/u"));
}

TEST(IndexedFolderList, HasTheTrashWhereOneOfItIsTheTrash) {
    const TemporaryFolder home;
    auto folders = listOf({home.makeFolder("Trash bin"), home.makeFolder("Documents")});
    EXPECT_FALSE(IndexedFolderList::hasTrashFolder(folders));
    folders.push_back(BWSelectedFileOrFolder::fileOrFolderWithPath(home.makeFolder(".Trash")));
    EXPECT_TRUE(IndexedFolderList::hasTrashFolder(folders));
}

TEST(IndexedFolderList, IsSortedByTheNamesAndKeepsTheOrderOfEqualOnes) {
    const TemporaryFolder home;
    auto folders = listOf({home.makeFolder("2/beta"), home.makeFolder("3/alpha"), home.makeFolder("1/beta"),
                           home.makeFolder("4/Zeta")});
    IndexedFolderList::sortByName(folders);
    std::vector<std::string> paths;
    for (const auto& folder : folders) paths.push_back(folder.path());
    EXPECT_THAT(paths,
                testing::ElementsAre(home / "4/Zeta", home / "3/alpha", home / "2/beta", home / "1/beta"));
}

} // namespace

} // namespace brimwick
