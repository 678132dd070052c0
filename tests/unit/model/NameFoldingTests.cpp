#include "model/NameFolding.h"

#include <gtest/gtest.h>

namespace brimwick {

TEST(NameFolding, LowersPlainLettersAndKeepsEverythingElse) {
    EXPECT_EQ(foldedName("Invoices 2024 (OLD) [Z]@_`{~"), "invoices 2024 (old) [z]@_`{~");
    EXPECT_EQ(foldedName(""), "");
}

TEST(NameFolding, TakesMarksOffLetters) {
    EXPECT_EQ(foldedName("Présentations"), "presentations");
    EXPECT_EQ(foldedName("ÅÄÖ Ñandú çŞ"), "aao nandu cs");
    EXPECT_EQ(foldedName("Việt Nam"), "viet nam");
    EXPECT_EQ(foldedName("Ёжик"), "ежик");
    EXPECT_EQ(foldedName("ΆΛΦΑ"), "αλφα");
}

TEST(NameFolding, DoesNotTellComposedFromDecomposedLetters) {
    EXPECT_EQ(foldedName("re\u0301sume\u0301"), foldedName("résumé"));
    EXPECT_EQ(foldedName("q\u0323\u0307x"), foldedName("q\u0307\u0323x"));
}

TEST(NameFolding, FoldsLettersThatHaveSeveralLowerCaseForms) {
    EXPECT_EQ(foldedName("Straße"), "strasse");
    EXPECT_EQ(foldedName("STRASSE"), "strasse");
    EXPECT_EQ(foldedName("GROẞ"), "gross");
    EXPECT_EQ(foldedName("ΟΔΟΣ"), foldedName("οδος"));
    EXPECT_EQ(foldedName("οδός"), foldedName("οδοσ"));
}

TEST(NameFolding, FoldsTheTurkishLettersWithAndWithoutDot) {
    EXPECT_EQ(foldedName("İstanbul"), "istanbul");
    EXPECT_EQ(foldedName("ISTANBUL"), "istanbul");
    EXPECT_EQ(foldedName("ılık"), "ılık");
}

TEST(NameFolding, SplitsLatinLigaturesAndKeepsLettersOfTheirOwn) {
    EXPECT_EQ(foldedName("ofﬁce"), "office");
    EXPECT_EQ(foldedName("Ærø"), "ærø");
}

TEST(NameFolding, FoldsALetterWithSeveralMarksToTheLetter) {
    EXPECT_EQ(foldedName("\u1F82"), "\u03B1");
    EXPECT_EQ(foldedName("\u03B1\u0313\u0300\u0345"), "\u03B1");
    EXPECT_EQ(foldedName("\u0390"), "\u03B9");
}

TEST(NameFolding, SpellsHangulSyllablesOut) {
    EXPECT_EQ(foldedName("\uD55C"), "\u1112\u1161\u11AB");
    EXPECT_EQ(foldedName("\u1112\u1161\u11AB"), "\u1112\u1161\u11AB");
}

TEST(NameFolding, KeepsScriptsWithoutCase) {
    EXPECT_EQ(foldedName("資料フォルダ"), "資料フォルタ");
    EXPECT_EQ(foldedName("مجلد"), "مجلد");
    EXPECT_EQ(foldedName("📁 Photos"), "📁 photos");
}

TEST(NameFolding, FoldsMarksAloneToNothing) {
    EXPECT_EQ(foldedName("\u0301\u0308\u20DD"), "");
}

TEST(NameFolding, LeavesOutTheIotaBelowAGreekLetterHoweverItIsWritten) {
    EXPECT_EQ(foldedName("\u1FB3"), "\u03B1");
    EXPECT_EQ(foldedName("\u1FBC"), "\u03B1");
    EXPECT_EQ(foldedName("\u03B1\u0345"), "\u03B1");
    EXPECT_EQ(foldedName("\u0391\u0399"), "\u03B1\u03B9");
}

TEST(NameFolding, KeepsBytesThatAreNoText) {
    EXPECT_EQ(foldedName("Caf\xE9 \xFF\xFE"), "caf\xE9 \xFF\xFE");
    EXPECT_EQ(foldedName("\xC3"), "\xC3");
    EXPECT_EQ(foldedName("\xE2\x82"
                         "A"),
              "\xE2\x82"
              "a");
    EXPECT_EQ(foldedName("\xC0\xAF"), "\xC0\xAF");
    EXPECT_EQ(foldedName("\xED\xA0\x80"), "\xED\xA0\x80");
    EXPECT_EQ(foldedName("\xF4\x90\x80\x80"), "\xF4\x90\x80\x80");
}

TEST(NameFolding, FoldsEveryCodePointOnlyOnce) {
    std::string all;
    for (char32_t point = 1; point < 0x110000; ++point) {
        if (point >= 0xD800 && point < 0xE000) continue;
        std::string letter;
        if (point < 0x80) {
            letter = {static_cast<char>(point)};
        } else if (point < 0x800) {
            letter = {static_cast<char>(0xC0 | point >> 6), static_cast<char>(0x80 | (point & 0x3F))};
        } else if (point < 0x10000) {
            letter = {static_cast<char>(0xE0 | point >> 12), static_cast<char>(0x80 | (point >> 6 & 0x3F)),
                      static_cast<char>(0x80 | (point & 0x3F))};
        } else {
            letter = {static_cast<char>(0xF0 | point >> 18), static_cast<char>(0x80 | (point >> 12 & 0x3F)),
                      static_cast<char>(0x80 | (point >> 6 & 0x3F)),
                      static_cast<char>(0x80 | (point & 0x3F))};
        }
        const std::string folded = foldedName(letter);
        ASSERT_EQ(foldedName(folded), folded) << "U+" << std::hex << static_cast<unsigned>(point);
        ASSERT_EQ(folded.find('\0'), std::string::npos);
    }
}

} // namespace brimwick
