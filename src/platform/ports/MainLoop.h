#pragma once

#include <chrono>
#include <functional>

namespace brimwick {

/// The loop of the main thread.
class MainLoop {
  public:
    virtual ~MainLoop() = default;
    /// Runs the task on the main thread, after what was posted before it. From any thread; returns at once. A
    /// task still waiting when the loop ends is dropped.
    virtual void post(std::function<void()> task) = 0;
    /// The wall clock.
    virtual std::chrono::system_clock::time_point now() const = 0;
};

} // namespace brimwick
