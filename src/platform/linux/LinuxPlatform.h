#pragma once

#include "platform/ports/Ports.h"

#include <functional>
#include <memory>
#include <string>

namespace brimwick {

struct DesktopNotification;

/// The ports as this desktop answers them, chosen once by the kind of session. Made after the application
/// object, used and ended on the main thread.
class LinuxPlatform {
  public:
    /// Both must outlive the platform.
    LinuxPlatform(MainLoop& mainLoop, InstanceService& instance);
    LinuxPlatform(const LinuxPlatform&) = delete;
    LinuxPlatform& operator=(const LinuxPlatform&) = delete;
    ~LinuxPlatform();

    Ports ports();
    /// What shows a notification where no service does.
    void setNotificationFallback(std::function<void(const DesktopNotification&)> fallback);

  private:
    struct Services;
    MainLoop& mainLoop_;
    InstanceService& instance_;
    std::unique_ptr<Services> services_;
};

} // namespace brimwick
