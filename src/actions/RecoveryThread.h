#pragma once

#include "actions/FileJournal.h"
#include "feedback/UserNotifications.h"
#include "platform/ports/MainLoop.h"

#include <thread>

namespace brimwick {

/// Puts right what earlier runs left, on a thread of its own, and tells the user in one message; says nothing
/// when there was nothing to do. Main thread only. Destroying it leaves the rest to the next start.
class RecoveryThread {
  public:
    /// Everything outlives it.
    RecoveryThread(FileJournal& journal, MainLoop& mainLoop, UserNotifications& notifications);

  private:
    std::jthread thread_;
};

} // namespace brimwick
