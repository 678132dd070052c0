#pragma once

#include "platform/ports/MainLoop.h"

#include <condition_variable>
#include <deque>
#include <mutex>

namespace brimwick {

/// Runs what was posted when the test says so; the clock stands where the test put it.
class FakeMainLoop : public MainLoop {
  public:
    void post(std::function<void()> task) override {
        {
            const std::lock_guard lock(mutex_);
            tasks_.push_back(std::move(task));
        }
        posted_.notify_all();
    }
    std::chrono::system_clock::time_point now() const override { return time; }

    /// Waits for the next task and runs it. False when none came in ten seconds.
    bool runNext() {
        std::function<void()> task;
        {
            std::unique_lock lock(mutex_);
            if (!posted_.wait_for(lock, std::chrono::seconds(10), [this] { return !tasks_.empty(); }))
                return false;
            task = std::move(tasks_.front());
            tasks_.pop_front();
        }
        task();
        return true;
    }
    bool hasTasks() const {
        const std::lock_guard lock(mutex_);
        return !tasks_.empty();
    }

    std::chrono::system_clock::time_point time = std::chrono::system_clock::from_time_t(1'700'000'000);

  private:
    mutable std::mutex mutex_;
    std::condition_variable posted_;
    std::deque<std::function<void()>> tasks_;
};

} // namespace brimwick
