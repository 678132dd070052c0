#pragma once

#include "platform/ports/MainLoop.h"

#include <QObject>

#include <deque>

namespace brimwick {

/// The event loop of the application object that exists while this does.
class QtMainLoop : public MainLoop {
  public:
    void post(std::function<void()> task) override;
    bool isHeld() const override { return held_; }
    std::unique_ptr<RepeatingTimer> repeatEvery(std::chrono::milliseconds interval,
                                                std::function<void()> tick) override;
    std::chrono::system_clock::time_point now() const override { return std::chrono::system_clock::now(); }

    /// Lets tasks and timers wait from now on, or lets them come again, the tasks in their order.
    void setHeld(bool held);

  private:
    void run(std::function<void()> task);

    bool held_ = false;
    /// What has come and was not run yet.
    std::deque<std::function<void()>> waiting_;
    /// Tasks are events of this object: they end with it, and run on its thread, the main one.
    QObject receiver_;
};

} // namespace brimwick
