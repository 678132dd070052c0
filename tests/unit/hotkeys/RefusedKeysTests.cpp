#include "hotkeys/RefusedKeys.h"

#include <gtest/gtest.h>

namespace brimwick {

TEST(RefusedKeys, AreExactlyTheBytesOfFunctionKeysDeleteAndQ) {
    for (unsigned byte = 0; byte < 256; ++byte) {
        const bool refused = byte <= 0x47 || byte == 0x51 || byte == 0x7F;
        EXPECT_EQ(isRefusedForHotKeys(static_cast<char16_t>(byte)), refused) << byte;
    }
}

TEST(RefusedKeys, AreToldByTheLowByteOfAnyCharacter) {
    for (unsigned high = 0; high < 256; ++high)
        for (const unsigned low : {0x00U, 0x47U, 0x48U, 0x51U, 0x7FU, 0xFFU}) {
            const auto character = static_cast<char16_t>(high << 8U | low);
            EXPECT_EQ(isRefusedForHotKeys(character), isRefusedForHotKeys(static_cast<char16_t>(low)))
                << high;
        }
}

TEST(RefusedKeys, StandInTheirOrderAndEachOnce) {
    EXPECT_EQ(refusedLowBytes.front(), 0x2A);
    EXPECT_EQ(refusedLowBytes[4], 0x7F);
    EXPECT_EQ(refusedLowBytes.back(), 0x51);
    for (const unsigned char byte : refusedLowBytes) EXPECT_EQ(std::ranges::count(refusedLowBytes, byte), 1);
}

TEST(RefusedKeys, LeaveTheLettersFromHOnSaveQ) {
    for (char16_t letter = u'A'; letter <= u'Z'; ++letter)
        EXPECT_EQ(isRefusedForHotKeys(letter), letter < u'H' || letter == u'Q');
    EXPECT_TRUE(isRefusedForHotKeys(u'7'));
    EXPECT_TRUE(isRefusedForHotKeys(u'@'));
    EXPECT_FALSE(isRefusedForHotKeys(u'['));
    EXPECT_FALSE(isRefusedForHotKeys(u'Ü'));
    EXPECT_TRUE(isRefusedForHotKeys(u'Й')) << "its low byte is 0x19";
}

} // namespace brimwick
