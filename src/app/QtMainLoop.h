#pragma once

#include "platform/ports/MainLoop.h"

#include <QObject>

namespace brimwick {

/// The event loop of the application object that exists while this does.
class QtMainLoop : public MainLoop {
  public:
    void post(std::function<void()> task) override;
    std::unique_ptr<RepeatingTimer> repeatEvery(std::chrono::milliseconds interval,
                                                std::function<void()> tick) override;
    std::chrono::system_clock::time_point now() const override { return std::chrono::system_clock::now(); }

  private:
    /// Tasks are events of this object: they end with it, and run on its thread, the main one.
    QObject receiver_;
};

} // namespace brimwick
