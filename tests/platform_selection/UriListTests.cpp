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

} // namespace
} // namespace brimwick
