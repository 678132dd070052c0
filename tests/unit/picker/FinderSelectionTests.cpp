#include "fakes/TemporaryFolder.h"
#include "model/FileUrl.h"
#include "picker/FinderSelection.h"

#include <gtest/gtest.h>

namespace brimwick {

TEST(FinderSelection, MakesAnEntryOfWhateverExistsEvenADanglingLink) {
    const TemporaryFolder folder;
    const std::string file = folder.makeFile("100%\n.txt");
    std::filesystem::create_symlink("nowhere", folder / "link");
    const std::string url = fileUrlWithPath(file, false);
    const auto files = finderSelection({url, fileUrlWithPath(folder / "link", false)}, "/home/somebody");
    ASSERT_EQ(files.size(), 2U);
    EXPECT_EQ(files[0].name(), "100%\n.txt");
    EXPECT_EQ(files[0].path(), file);
    EXPECT_EQ(files[0].url(), url);
    EXPECT_EQ(files[0].icon(), (Icon{Icon::Source::File, file}));
    EXPECT_EQ(files[1].name(), "link");
}

TEST(FinderSelection, LeavesOutTheRootTheHomeFolderAndWhatDoesNotExist) {
    const TemporaryFolder home;
    const std::string url = "file://" + home.path();
    EXPECT_TRUE(
        finderSelection({"file:///", "file:////", url, url + "/", url + "/missing", "trash:///a", "/a", ""},
                        home.path())
            .empty());
    EXPECT_TRUE(finderSelection({url}, home.path() + "/").empty());
}

TEST(FinderSelection, KeepsTheOrderOfTheFileManager) {
    const TemporaryFolder folder;
    const auto files = finderSelection({fileUrlWithPath(folder.makeFile("z"), false), "trash:///a",
                                        fileUrlWithPath(folder.makeFile("a"), false)},
                                       "/home/somebody");
    ASSERT_EQ(files.size(), 2U);
    EXPECT_EQ(files[0].name(), "z");
    EXPECT_EQ(files[1].name(), "a");
}

} // namespace brimwick
