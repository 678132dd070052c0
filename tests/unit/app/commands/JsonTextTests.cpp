#include "app/commands/JsonText.h"

#include <gtest/gtest.h>

namespace brimwick {
namespace {

std::string base64(std::string_view bytes) {
    std::string text;
    appendBase64(bytes, text);
    return text;
}

std::string jsonString(std::string_view bytes) {
    std::string text;
    appendJsonString(bytes, text);
    return text;
}

TEST(JsonText, WritesBase64WithItsPadding) {
    EXPECT_EQ(base64(""), "");
    EXPECT_EQ(base64("f"), "Zg==");
    EXPECT_EQ(base64("fo"), "Zm8=");
    EXPECT_EQ(base64("foo"), "Zm9v");
    EXPECT_EQ(base64("foobar"), "Zm9vYmFy");
    EXPECT_EQ(base64("\xFB\xEF\xFF"), "++//");
}

TEST(JsonText, EscapesWhatAStringMayNotHold) {
    EXPECT_EQ(jsonString("a\"b\\c/d"), R"("a\"b\\c/d")");
    EXPECT_EQ(jsonString("\x01\x1F\x7F"), "\"\\u0001\\u001f\x7F\"");
    EXPECT_EQ(jsonString(std::string_view("\0", 1)), R"("\u0000")");
}

TEST(JsonText, PutsAReplacementInPlaceOfEachByteThatIsNoUtf8) {
    EXPECT_EQ(jsonString("a\xFFz\xC3"), "\"a\uFFFDz\uFFFD\"");
    EXPECT_EQ(jsonString("\U0001F600"), "\"\U0001F600\"");
}

} // namespace
} // namespace brimwick
