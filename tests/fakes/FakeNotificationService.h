#pragma once

#include "platform/ports/NotificationService.h"

#include <vector>

namespace brimwick {

/// Keeps what was delivered.
class FakeNotificationService : public NotificationService {
  public:
    void deliver(const DesktopNotification& notification) override { delivered.push_back(notification); }
    /// The texts without their first line, the time.
    std::vector<std::string> texts() const {
        std::vector<std::string> texts;
        for (const auto& notification : delivered)
            texts.push_back(notification.body.substr(notification.body.find('\n') + 1));
        return texts;
    }

    std::vector<DesktopNotification> delivered;
};

} // namespace brimwick
