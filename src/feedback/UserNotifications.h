#pragma once

#include "platform/ports/MainLoop.h"
#include "platform/ports/NotificationService.h"

#include <chrono>
#include <string>

namespace brimwick {

/// The one channel for texts to the user that need no answer. Main thread only.
class UserNotifications {
  public:
    UserNotifications(NotificationService& service, const MainLoop& clock)
        : service_(service), clock_(clock) {}

    /// Delivers one notification titled "Brimwick": the local time as "h:mm:ss a", then the text as it
    /// stands.
    void sendUserNotification(const std::string& text);

  private:
    NotificationService& service_;
    const MainLoop& clock_;
    std::chrono::sys_seconds timedSecond_ = std::chrono::sys_seconds::min();
    std::string time_; ///< that second, as it is told
};

/// "9:05:07 PM": twelve hours without a leading zero, the marker in the user's language where it has one.
std::string notificationTime(std::chrono::system_clock::time_point moment);

} // namespace brimwick
