#pragma once

#include "platform/ports/MainLoop.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <vector>

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
    bool isHeld() const override { return held; }
    std::chrono::system_clock::time_point now() const override { return time; }
    std::unique_ptr<RepeatingTimer> repeatEvery(std::chrono::milliseconds interval,
                                                std::function<void()> tick) override {
        timerCount();
        auto timer = std::make_shared<Timer>(Timer{time + interval, interval, std::move(tick)});
        timers_.push_back(timer);
        return std::make_unique<TimerHandle>(std::move(timer));
    }
    /// Lets the time pass; timers are called when they are due.
    void pass(std::chrono::milliseconds duration) {
        const auto end = time + duration;
        for (auto timer = nextTimer(end); timer; timer = nextTimer(end)) {
            time = timer->due;
            timer->due += timer->interval;
            timer->tick();
        }
        time = end;
    }
    /// How many timers run.
    std::size_t timerCount() {
        std::erase_if(timers_, [](const auto& timer) { return timer.expired(); });
        return timers_.size();
    }

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

    bool held = false;
    std::chrono::system_clock::time_point time = std::chrono::system_clock::from_time_t(1'700'000'000);

  private:
    struct Timer {
        std::chrono::system_clock::time_point due;
        std::chrono::milliseconds interval;
        std::function<void()> tick;
    };
    class TimerHandle : public RepeatingTimer {
      public:
        explicit TimerHandle(std::shared_ptr<Timer> timer) : timer_(std::move(timer)) {}

      private:
        std::shared_ptr<Timer> timer_;
    };

    /// The one that is due first until then, if there is one; it lives while it is called.
    std::shared_ptr<Timer> nextTimer(std::chrono::system_clock::time_point end) const {
        std::shared_ptr<Timer> next;
        for (const auto& weak : timers_)
            if (auto timer = weak.lock(); timer && timer->due <= end && (!next || timer->due < next->due))
                next = timer;
        return next;
    }

    std::vector<std::weak_ptr<Timer>> timers_;
    mutable std::mutex mutex_;
    std::condition_variable posted_;
    std::deque<std::function<void()>> tasks_;
};

} // namespace brimwick
