#include "actions/CompareTrees.h"
#include "fakes/TemporaryFolder.h"

#include <fcntl.h>
#include <gtest/gtest.h>

#include <filesystem>

namespace brimwick {

namespace {

class CompareTreesTest : public testing::Test {
  protected:
    CompareTreesTest() {
        folder.makeFolder("tree/sub");
        folder.makeFile("tree/sub/a", "first");
        folder.makeFile("tree/z", "last");
        std::filesystem::copy(folder / "tree", folder / "copy", std::filesystem::copy_options::recursive);
    }
    auto compare(const std::string& one, const std::string& other) const {
        return compareTrees({{AT_FDCWD, folder / one}, {AT_FDCWD, folder / other}, FileMatch::Same, {}}, {});
    }

    TemporaryFolder folder;
};

TEST_F(CompareTreesTest, FindsACopyTheSameAndAnEntryNoCopyOfItself) {
    EXPECT_TRUE(compare("tree", "copy"));
    EXPECT_FALSE(compare("tree", "tree"));
    std::filesystem::remove(folder / "copy/z");
    std::filesystem::create_hard_link(folder / "tree/z", folder / "copy/z");
    const auto compared = compare("tree", "copy");
    ASSERT_FALSE(compared);
    EXPECT_EQ(compared.error().relativePath, "z");
}

TEST_F(CompareTreesTest, FindsTheFirstDifferenceInFilesOfEverySize) {
    for (const std::size_t size : {0, 1, 4095, 4096, 4097, 1'048'575, 1'048'576, 1'048'577, 3'000'000}) {
        std::string content(size, 'x');
        folder.makeFile("tree/z", content);
        folder.makeFile("copy/z", content);
        EXPECT_TRUE(compare("tree", "copy")) << size;
        if (size == 0) continue;
        content.back() = 'y';
        folder.makeFile("copy/z", content);
        EXPECT_FALSE(compare("tree", "copy")) << size;
    }
}

TEST_F(CompareTreesTest, SeesWhatHasChangedSince) {
    const auto same = compare("tree", "copy");
    ASSERT_TRUE(same);
    const NameInFolder copy{AT_FDCWD, folder / "copy"};
    EXPECT_FALSE(checkEntries(copy, same->other));
    folder.makeFile("other", "first");
    std::filesystem::rename(folder / "other", folder / "copy/sub/a");
    EXPECT_EQ(checkEntries(copy, same->other), std::errc::device_or_resource_busy);
    std::filesystem::remove(folder / "copy/sub/a");
    EXPECT_TRUE(checkEntries(copy, same->other));
    std::filesystem::remove_all(folder / "copy");
    EXPECT_EQ(checkEntries(copy, same->other), std::errc::no_such_file_or_directory);
}

} // namespace

} // namespace brimwick
