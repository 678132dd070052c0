#include "model/XmlText.h"

#include <gtest/gtest.h>

namespace brimwick {
namespace {

TEST(XmlText, KnowsWellFormedUtf8) {
    EXPECT_TRUE(isUtf8(""));
    EXPECT_TRUE(isUtf8("a\u00e9\u65e5\U0001F600\x01"));
    EXPECT_TRUE(isUtf8(std::string_view("a\0b", 3)));
    for (const char* bytes : {"\xFF", "a\xC3", "\xC0\xAF", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\x80"})
        EXPECT_FALSE(isUtf8(bytes));
}

TEST(XmlText, KnowsWhatXmlGivesBack) {
    EXPECT_TRUE(survivesXml("/a\t\n<&>\u00e9"));
    for (const char* bytes : {"a\rb", "\x01", "\x1F", "\xFF", "\xEF\xBF\xBE", "\xEF\xBF\xBF"})
        EXPECT_FALSE(survivesXml(bytes));
    EXPECT_FALSE(survivesXml(std::string_view("a\0b", 3)));
}

TEST(XmlText, LeavesOutOnlyWhatXmlCannotHold) {
    EXPECT_EQ(withoutWhatXmlCannotHold(std::string_view("a\0\x01\r\n\xFFz\u00e9\xEF\xBF\xBF", 12)),
              "a\r\nz\u00e9");
}

TEST(XmlText, PutsAReplacementInPlaceOfWhatIsNoUtf8) {
    EXPECT_EQ(withReplacementCharacters("a\xFF\xC3z\u00e9"), "a\uFFFD\uFFFDz\u00e9");
    EXPECT_EQ(withReplacementCharacters(std::string_view("\0", 1)), std::string("\0", 1));
}

} // namespace
} // namespace brimwick
