#pragma once

#include <chrono>
#include <functional>
#include <memory>

namespace brimwick {

/// Something that happens again and again until this is destroyed, which may be while it happens.
class RepeatingTimer {
  public:
    virtual ~RepeatingTimer() = default;
};

/// The loop of the main thread.
class MainLoop {
  public:
    virtual ~MainLoop() = default;
    /// Runs the task on the main thread, after what was posted before it. From any thread; returns at once. A
    /// task still waiting when the loop ends is dropped.
    virtual void post(std::function<void()> task) = 0;
    /// Whether tasks and timers wait, for the main thread is in the midst of something and serves its windows
    /// meanwhile. Main thread only.
    virtual bool isHeld() const = 0;
    /// Runs the task now, or once the loop is not held any more. Main thread only.
    void runWhenFree(std::function<void()> task) {
        if (isHeld())
            post(std::move(task));
        else
            task();
    }
    /// Calls the function on the main thread, for the first time after one interval. Main thread only.
    virtual std::unique_ptr<RepeatingTimer> repeatEvery(std::chrono::milliseconds interval,
                                                        std::function<void()> tick) = 0;
    /// The wall clock.
    virtual std::chrono::system_clock::time_point now() const = 0;
};

} // namespace brimwick
