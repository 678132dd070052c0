#pragma once

#include <algorithm>
#include <exception>
#include <mutex>
#include <thread>
#include <vector>

namespace brimwick {

/// As many threads as are worth it on this machine for work that the processor alone limits, up to `most`.
inline unsigned threadsFor(unsigned most) {
    return std::clamp(std::thread::hardware_concurrency(), 1U, most);
}

/// Calls task(0) to task(threads - 1), each on a thread of its own, one of them the caller's; waits for all.
/// Throws what a task threw, or what keeps a thread from starting, after all have ended.
template<typename Task>
void inParallel(unsigned threads, const Task& task) {
    std::mutex mutex;
    std::exception_ptr failure;
    const auto attempt = [&](unsigned number) noexcept {
        try {
            task(number);
        } catch (...) {
            const std::lock_guard lock(mutex);
            failure = std::current_exception();
        }
    };
    {
        std::vector<std::jthread> helpers;
        for (unsigned number = 1; number < threads; ++number) helpers.emplace_back(attempt, number);
        attempt(0);
    }
    if (failure) std::rethrow_exception(failure);
}

} // namespace brimwick
