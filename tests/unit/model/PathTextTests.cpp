#include "model/PathText.h"

#include <gtest/gtest.h>

namespace brimwick {
namespace {

TEST(PathText, GivesTheLastComponent) {
    EXPECT_EQ(lastPathComponent("/a/b"), "b");
    EXPECT_EQ(lastPathComponent("/a/b//"), "b");
    EXPECT_EQ(lastPathComponent("/a"), "a");
    EXPECT_EQ(lastPathComponent("/"), "/");
    EXPECT_EQ(lastPathComponent("//"), "/");
    EXPECT_EQ(lastPathComponent("a"), "a");
    EXPECT_EQ(lastPathComponent(""), "");
}

TEST(PathText, RemovesTheLastComponent) {
    EXPECT_EQ(parentPath("/a/b/c"), "/a/b");
    EXPECT_EQ(parentPath("/a/b/"), "/a");
    EXPECT_EQ(parentPath("/a//b"), "/a");
    EXPECT_EQ(parentPath("/a"), "/");
    EXPECT_EQ(parentPath("/"), "/");
    EXPECT_EQ(parentPath("a/b"), "a");
    EXPECT_EQ(parentPath("a"), "");
    EXPECT_EQ(parentPath(""), "");
}

TEST(PathText, JoinsWithOneSlash) {
    EXPECT_EQ(joinPath("/a", "b"), "/a/b");
    EXPECT_EQ(joinPath("/a/", "b"), "/a/b");
    EXPECT_EQ(joinPath("/", "b"), "/b");
    EXPECT_EQ(joinPath("", "b"), "b");
}

} // namespace
} // namespace brimwick
