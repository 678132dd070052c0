#pragma once

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstddef>
#include <vector>

namespace brimwick {

/// Times the same work again and again.
class Stopwatch {
  public:
    /// Does the work, timed, and returns what it returns; that this is destroyed later is not timed.
    template<typename Work>
    auto time(Work&& work) {
        const auto start = std::chrono::steady_clock::now();
        auto result = work();
        times_.push_back(std::chrono::steady_clock::now() - start);
        return result;
    }

    /// The time that this share of the runs did not exceed, 0.5 being the median. There must be a run.
    double microseconds(double share) const {
        auto sorted = times_;
        std::ranges::sort(sorted);
        const auto rank = static_cast<std::size_t>(std::ceil(share * static_cast<double>(sorted.size())));
        return sorted[std::max<std::size_t>(rank, 1) - 1].count();
    }

  private:
    std::vector<std::chrono::duration<double, std::micro>> times_;
};

} // namespace brimwick
