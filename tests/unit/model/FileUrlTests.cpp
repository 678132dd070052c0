#include "model/FileUrl.h"

#include <gtest/gtest.h>

namespace brimwick {
namespace {

TEST(FileUrl, EndsInASlashForAFolderOnly) {
    EXPECT_EQ(fileUrlWithPath("/a/b", false), "file:///a/b");
    EXPECT_EQ(fileUrlWithPath("/a/b", true), "file:///a/b/");
    EXPECT_EQ(fileUrlWithPath("/a/b/", true), "file:///a/b/");
    EXPECT_EQ(fileUrlWithPath("/", true), "file:///");
}

TEST(FileUrl, EncodesWhatAUrlCannotHold) {
    EXPECT_EQ(fileUrlWithPath("/a b%#?", false), "file:///a%20b%25%23%3F");
    EXPECT_EQ(fileUrlWithPath("/\xC3\xA9\xFF\n", false), "file:///%C3%A9%FF%0A");
    EXPECT_EQ(fileUrlWithPath("/A-z_0.9~", false), "file:///A-z_0.9~");
}

TEST(FileUrl, GivesEveryByteOfAPathBack) {
    std::string path = "/";
    for (int byte = 1; byte < 256; ++byte) path += static_cast<char>(byte);
    EXPECT_EQ(pathOfFileUrl(fileUrlWithPath(path, false)), path);
    EXPECT_EQ(pathOfFileUrl(fileUrlWithPath(path, true)), path);
}

TEST(FileUrl, LeavesTheSlashesAtTheEndOut) {
    EXPECT_EQ(pathOfFileUrl("file:///a/b/"), "/a/b");
    EXPECT_EQ(pathOfFileUrl("file:///a/b//"), "/a/b");
    EXPECT_EQ(pathOfFileUrl("file:///"), "/");
}

TEST(FileUrl, AcceptsThisMachineAsTheHost) {
    EXPECT_EQ(pathOfFileUrl("file://localhost/a"), "/a");
    EXPECT_EQ(pathOfFileUrl("FILE://LocalHost/a"), "/a");
}

TEST(FileUrl, DecodesCapitalAndSmallHexadecimalDigits) {
    EXPECT_EQ(pathOfFileUrl("file:///%c3%A9"), "/\xC3\xA9");
}

TEST(FileUrl, HasNoPathForOtherSchemesAndHosts) {
    EXPECT_EQ(pathOfFileUrl("http://localhost/a"), std::nullopt);
    EXPECT_EQ(pathOfFileUrl("trash:///a"), std::nullopt);
    EXPECT_EQ(pathOfFileUrl("file://elsewhere/a"), std::nullopt);
    EXPECT_EQ(pathOfFileUrl("file://localhosts/a"), std::nullopt);
    EXPECT_EQ(pathOfFileUrl("/a"), std::nullopt);
    EXPECT_EQ(pathOfFileUrl(""), std::nullopt);
}

TEST(FileUrl, HasNoPathForARelativeOne) {
    EXPECT_EQ(pathOfFileUrl("file://"), std::nullopt);
    EXPECT_EQ(pathOfFileUrl("file://a"), std::nullopt);
    EXPECT_EQ(pathOfFileUrl("file:a"), std::nullopt);
    EXPECT_EQ(pathOfFileUrl("file://localhost"), std::nullopt);
}

TEST(FileUrl, HasNoPathForAMalformedEscape) {
    for (const char* url : {"file:///%", "file:///%4", "file:///%G1", "file:///%1G", "file:///%-1",
                            "file:///% 1", "file:///a%"})
        EXPECT_EQ(pathOfFileUrl(url), std::nullopt) << url;
}

TEST(FileUrl, HasNoPathForANulByte) {
    EXPECT_EQ(pathOfFileUrl("file:///a%00b"), std::nullopt);
    EXPECT_EQ(pathOfFileUrl(std::string_view("file:///a\0b", 11)), std::nullopt);
}

TEST(FileUrl, HasNoPathWithAQueryOrAFragment) {
    EXPECT_EQ(pathOfFileUrl("file:///a?b"), std::nullopt);
    EXPECT_EQ(pathOfFileUrl("file:///a#b"), std::nullopt);
}

} // namespace
} // namespace brimwick
