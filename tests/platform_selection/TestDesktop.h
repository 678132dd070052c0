#pragma once

#include "fakes/TemporaryFolder.h"

#include <functional>
#include <memory>

#include "TestProcess.h"

namespace brimwick {

/// A display, a session bus, a window manager and a home of the tests' own. Everything that is started while
/// it lives finds itself there.
class TestDesktop {
  public:
    /// Throws when a part of it does not start.
    TestDesktop();

    const std::string& home() const { return home_; }

  private:
    TemporaryFolder folder_;
    std::string home_;
    std::unique_ptr<TestProcess> display_;
    std::unique_ptr<TestProcess> bus_;
    std::unique_ptr<TestProcess> windowManager_;
};

/// Lets the program's events go on until the condition holds; false when it still does not after some
/// seconds.
bool eventually(const std::function<bool()>& condition,
                std::chrono::milliseconds patience = std::chrono::seconds(15));

} // namespace brimwick
