#include "actions/ProgressText.h"

#include <gtest/gtest.h>

namespace brimwick {

namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

TEST(ProgressText, TellsSizesRateAndTimeLeft) {
    EXPECT_EQ(progressText(1'200'000'000, 3'400'000'000, seconds(20)),
              "1.2 GB of 3.4 GB, 60 MB/s, about 40 seconds left");
    EXPECT_EQ(progressText(500, 1000, seconds(1)), "500 bytes of 1.0 kB, 500 bytes/s, a few seconds left");
}

TEST(ProgressText, TellsWhatIsKnown) {
    EXPECT_EQ(progressText(0, 0, seconds(9)), "");
    EXPECT_EQ(progressText(0, 1000, seconds(9)), "0 bytes of 1.0 kB");
    EXPECT_EQ(progressText(2000, 0, seconds(2)), "2.0 kB, 1.0 kB/s");
    EXPECT_EQ(progressText(500, 1000, milliseconds(100)), "500 bytes of 1.0 kB");
}

TEST(ProgressText, TellsThatTheDiskIsWaitedForInTheEnd) {
    EXPECT_EQ(progressText(1000, 1000, seconds(1)), "1.0 kB of 1.0 kB, finishing");
    EXPECT_EQ(progressText(2000, 1000, seconds(1)), "2.0 kB of 2.0 kB, finishing");
}

TEST(ProgressText, RoundsTheTimeLeft) {
    const auto timeLeft = [](std::int64_t left) {
        const std::string text = progressText(1000, 1000 + 1000 * left, seconds(1));
        return text.substr(text.rfind(", ") + 2);
    };
    EXPECT_EQ(timeLeft(5), "a few seconds left");
    EXPECT_EQ(timeLeft(6), "about 10 seconds left");
    EXPECT_EQ(timeLeft(55), "about 55 seconds left");
    EXPECT_EQ(timeLeft(56), "about 1 minute left");
    EXPECT_EQ(timeLeft(100), "about 2 minutes left");
    EXPECT_EQ(timeLeft(5400), "about 90 minutes left");
    EXPECT_EQ(timeLeft(5401), "about 2 hours left");
}

} // namespace

} // namespace brimwick
