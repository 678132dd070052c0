#include "actions/FreeSpace.h"

#include <gtest/gtest.h>

namespace brimwick {

namespace {

TEST(SizeText, HasTwoOrThreeFigures) {
    EXPECT_EQ(sizeText(0), "0 bytes");
    EXPECT_EQ(sizeText(999), "999 bytes");
    EXPECT_EQ(sizeText(1000), "1.0 kB");
    EXPECT_EQ(sizeText(1549), "1.5 kB");
    EXPECT_EQ(sizeText(9'949), "9.9 kB");
    EXPECT_EQ(sizeText(9'950), "10 kB");
    EXPECT_EQ(sizeText(999'499), "999 kB");
    EXPECT_EQ(sizeText(999'500), "1.0 MB");
    EXPECT_EQ(sizeText(2'000'000'000), "2.0 GB");
    EXPECT_EQ(sizeText(18'446'744'073'709'551'615U), "18 EB");
}

} // namespace

} // namespace brimwick
