#pragma once

#include "feedback/UserNotifications.h"

namespace brimwick {

/// The check for a newer version, which this build leaves to the system's packages. Main thread only.
class UpdateController {
  public:
    /// The notifications outlive it.
    explicit UpdateController(UserNotifications& notifications) : notifications_(notifications) {}

    /// At start-up: nothing is asked, and nobody told.
    void checkForUpdate() {}
    /// From the menu.
    void checkForUpdateOnRequest() {
        notifications_.sendUserNotification("Updates of Brimwick come with your system's packages.");
    }

  private:
    UserNotifications& notifications_;
};

} // namespace brimwick
