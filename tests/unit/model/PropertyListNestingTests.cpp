#include "model/PropertyListNesting.h"

#include <gtest/gtest.h>

namespace brimwick {
namespace {

TEST(PropertyListNesting, CountsArraysAndDictionariesInEachOther) {
    EXPECT_TRUE(isNestedAtMost("<plist><dict><key>a</key><array><string/></array></dict></plist>", 2));
    EXPECT_FALSE(isNestedAtMost("<plist><dict><key>a</key><array><string/></array></dict></plist>", 1));
    EXPECT_FALSE(isNestedAtMost("<dict ><array\n>", 1));
    EXPECT_FALSE(isNestedAtMost("<array/ ><array/ >", 1));
}

TEST(PropertyListNesting, DoesNotCountNeighbours) {
    EXPECT_TRUE(isNestedAtMost("<dict></dict><array/><array /><dict></dict >", 1));
}

TEST(PropertyListNesting, DoesNotCountNamesThatOnlyBeginAlike) {
    EXPECT_TRUE(isNestedAtMost("<arrays><dictionary>", 0));
}

TEST(PropertyListNesting, DoesNotCountInCommentsAndCharacterData) {
    EXPECT_TRUE(isNestedAtMost("<!-- <array> --><![CDATA[<dict>]]>", 0));
    EXPECT_FALSE(isNestedAtMost("<array><!-- </array> --><array>", 1));
    EXPECT_FALSE(isNestedAtMost("<array><![CDATA[</array>]]><array>", 1));
    EXPECT_FALSE(isNestedAtMost("<array><!--></array>--><array>", 1));
}

TEST(PropertyListNesting, AcceptsTheUsualHeads) {
    EXPECT_TRUE(isNestedAtMost("<?xml version='1.0' encoding='UTF-8'?>", 0));
    EXPECT_TRUE(isNestedAtMost("<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
                               "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\"><plist version=\"1.0\">",
                               0));
}

TEST(PropertyListNesting, RefusesMarkupWhoseEndIsDoubtful) {
    for (const char* xml :
         {"<", "<a", "<a<b>", "<!--", "<!-- ->", "<![CDATA[ ]>", "<a b=\">\">", "<a b='>'>",
          "<a b=\"'\" c='\"'>", "<?xml a=\">\"?>", "<?xml>", "<!DOCTYPE a [<b>]>", "</array>"})
        EXPECT_FALSE(isNestedAtMost(xml, 9)) << xml;
}

} // namespace
} // namespace brimwick
