#include "model/Parallel.h"

#include <gtest/gtest.h>

#include <array>
#include <stdexcept>

namespace brimwick {

TEST(Parallel, RunsEveryTaskAndWaitsForAll) {
    std::array<int, 8> done{};
    inParallel(done.size(), [&done](unsigned number) { done[number] = 1; });
    for (const int one : done) EXPECT_EQ(one, 1);
}

TEST(Parallel, PassesOnWhatATaskThrows) {
    const auto fail = [](unsigned number) {
        if (number == 2) throw std::runtime_error("two");
    };
    EXPECT_THROW(inParallel(3, fail), std::runtime_error);
}

TEST(Parallel, OneThreadIsTheCallers) {
    const auto caller = std::this_thread::get_id();
    inParallel(1, [caller](unsigned) { EXPECT_EQ(std::this_thread::get_id(), caller); });
}

} // namespace brimwick
