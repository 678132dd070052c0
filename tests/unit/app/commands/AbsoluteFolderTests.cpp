#include "app/commands/AbsoluteFolder.h"
#include "fakes/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace brimwick {
namespace {

/// Stands in a folder of its own, which holds "a/b", "link" to it, and a file.
class AbsoluteFolderTest : public testing::Test {
  protected:
    AbsoluteFolderTest() {
        folder_.makeFolder("a/b");
        folder_.makeFile("file");
        std::filesystem::create_directory_symlink("a/b", folder_ / "link");
        std::filesystem::current_path(folder_.path());
    }
    ~AbsoluteFolderTest() override { std::filesystem::current_path(before_); }

    const std::filesystem::path before_ = std::filesystem::current_path();
    const TemporaryFolder folder_{
        std::filesystem::canonical(std::filesystem::temp_directory_path()).string()};
};

TEST_F(AbsoluteFolderTest, StartsAtTheFolderWhereTheCommandStands) {
    EXPECT_EQ(absoluteFolder("a/b").value(), folder_ / "a/b");
    EXPECT_EQ(absoluteFolder(".").value(), folder_.path());
    EXPECT_EQ(absoluteFolder("./a//b/.").value(), folder_ / "a/b");
    EXPECT_EQ(absoluteFolder(folder_ / "a/").value(), folder_ / "a");
    EXPECT_EQ(absoluteFolder("/").value(), "/");
}

TEST_F(AbsoluteFolderTest, KeepsTheNameOfALink) {
    EXPECT_EQ(absoluteFolder("link").value(), folder_ / "link");
    EXPECT_EQ(absoluteFolder("link/").value(), folder_ / "link");
}

TEST_F(AbsoluteFolderTest, ClimbsFromWhereALinkLeads) {
    EXPECT_EQ(absoluteFolder("a/b/..").value(), folder_ / "a");
    EXPECT_EQ(absoluteFolder("link/..").value(), folder_ / "a");
}

TEST_F(AbsoluteFolderTest, SaysWhyThereIsNoSuchFolder) {
    EXPECT_EQ(absoluteFolder("gone").error(), "gone: No such file or directory");
    EXPECT_EQ(absoluteFolder("file").error(), "file: Not a directory");
    EXPECT_EQ(absoluteFolder("file/..").error(), "file/..: Not a directory");
}

} // namespace
} // namespace brimwick
