#include "model/BWInteger.h"

#include <gtest/gtest.h>

#include <limits>

namespace brimwick {

TEST(BWInteger, StartsAtZero) {
    EXPECT_EQ(BWInteger().intValue(), 0);
}

TEST(BWInteger, IncrementMakesANewNumberAndKeepsTheOldOne) {
    const BWInteger five = BWInteger::initWithInt(5);
    const BWInteger six = five.increment();
    EXPECT_EQ(six.intValue(), 6);
    EXPECT_EQ(five.intValue(), 5);
}

TEST(BWInteger, TakesANewValue) {
    BWInteger integer = BWInteger::initWithInt(5);
    integer.setIntValue(-7);
    EXPECT_EQ(integer.intValue(), -7);
}

TEST(BWInteger, GoesOnAtTheLowestNumberAfterTheHighest) {
    const auto highest = BWInteger::initWithInt(std::numeric_limits<std::int32_t>::max());
    EXPECT_EQ(highest.increment().intValue(), std::numeric_limits<std::int32_t>::min());
}

} // namespace brimwick
