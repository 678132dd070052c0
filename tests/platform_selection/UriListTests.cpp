#include "fakes/TemporaryFolder.h"
#include "platform/linux/filemanagers/UriList.h"

#include <gmock/gmock.h>

namespace brimwick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(UriList, TakesLinesThatEndInCarriageReturnAndLineFeed) {
    EXPECT_THAT(parseUriList("file:///a\r\nfile:///b\r\n"), ElementsAre("file:///a", "file:///b"));
}

TEST(UriList, TakesLinesThatEndInLineFeedAndALastLineWithoutEnd) {
    EXPECT_THAT(parseUriList("file:///a\nfile:///b"), ElementsAre("file:///a", "file:///b"));
}

TEST(UriList, LeavesOutCommentsEmptyLinesAndAClosingNull) {
    using namespace std::string_view_literals;
    EXPECT_THAT(parseUriList("# two files\r\n\r\nfile:///a\r\n#\r\nfile:///b\r\n\0"sv),
                ElementsAre("file:///a", "file:///b"));
    EXPECT_THAT(parseUriList("#\n"), IsEmpty());
    EXPECT_THAT(parseUriList(""), IsEmpty());
}

TEST(UriList, KeepsTheOrder) {
    EXPECT_THAT(parseUriList("file:///z\nfile:///a\nfile:///m"),
                ElementsAre("file:///z", "file:///a", "file:///m"));
}

TEST(FileUrl, IsDecodedToTheBytesOfThePath) {
    EXPECT_EQ(pathOfFileUrl("file:///a%20b/%E6%97%A5%0A100%25%3f"), "/a b/\xE6\x97\xA5\n100%?");
    EXPECT_EQ(pathOfFileUrl("file:///%FF%FE"), "/\xFF\xFE");
    EXPECT_EQ(pathOfFileUrl("file:/short"), "/short");
    EXPECT_EQ(pathOfFileUrl("file://localhost/a"), "/a");
}

TEST(FileUrl, OfAnotherMachineOrSchemeHasNoPath) {
    EXPECT_EQ(pathOfFileUrl("file://elsewhere.invalid/a"), std::nullopt);
    EXPECT_EQ(pathOfFileUrl("trash:///a"), std::nullopt);
    EXPECT_EQ(pathOfFileUrl("/a"), std::nullopt);
    EXPECT_EQ(pathOfFileUrl("file:relative"), std::nullopt);
}

TEST(FileUrl, ThatIsBadlyEscapedHasNoPath) {
    EXPECT_EQ(pathOfFileUrl("file:///a%"), std::nullopt);
    EXPECT_EQ(pathOfFileUrl("file:///a%4"), std::nullopt);
    EXPECT_EQ(pathOfFileUrl("file:///a%zz"), std::nullopt);
    EXPECT_EQ(pathOfFileUrl("file:///a%00b"), std::nullopt);
}

TEST(SelectedItem, IsUsableWhenItExistsEvenAsADanglingLink) {
    const TemporaryFolder folder;
    const std::string file = folder.makeFile("100%");
    std::filesystem::create_symlink("nowhere", folder / "link");
    EXPECT_EQ(usableItem("file://" + folder.path() + "/100%25", "/home/somebody"),
              "file://" + folder.path() + "/100%25");
    EXPECT_EQ(usableItem("file://localhost" + folder.path() + "/link", "/home/somebody"),
              "file://" + folder.path() + "/link");
}

TEST(SelectedItem, IsNotTheRootNorTheHomeFolderNorWhatDoesNotExist) {
    const TemporaryFolder home;
    EXPECT_EQ(usableItem("file:///", home.path()), std::nullopt);
    EXPECT_EQ(usableItem("file:////", home.path()), std::nullopt);
    EXPECT_EQ(usableItem("file://" + home.path(), home.path()), std::nullopt);
    EXPECT_EQ(usableItem("file://" + home.path() + "/", home.path() + "/"), std::nullopt);
    EXPECT_EQ(usableItem("file://" + home.path() + "/missing", home.path()), std::nullopt);
    EXPECT_EQ(usableItem("trash:///a", home.path()), std::nullopt);
}

} // namespace
} // namespace brimwick
