#pragma once

#include <algorithm>
#include <cstddef>
#include <exception>
#include <mutex>
#include <system_error>
#include <thread>
#include <vector>

namespace brimwick {

/// As many threads as are worth it on this machine. Disks answer few at a time: more would only take the
/// processors away from others.
inline unsigned usualThreads() {
    return std::clamp(std::thread::hardware_concurrency(), 1U, 4U);
}

/// The same for work on so many names, which when they are few is done before a thread has started.
inline unsigned threadsForNames(std::size_t names) {
    return names < 10000 ? 1 : usualThreads();
}

/// Calls task(0) to task(threads - 1), each on a thread of its own, one of them the caller's, as are those
/// for which no thread can be started; waits for all. Throws what a task threw, after all have ended.
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
        for (unsigned number = 1; number < threads; ++number) {
            try {
                helpers.emplace_back(attempt, number);
            } catch (const std::system_error&) {
                attempt(number);
            }
        }
        attempt(0);
    }
    if (failure) std::rethrow_exception(failure);
}

} // namespace brimwick
