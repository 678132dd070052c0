#pragma once

#include <string>

namespace brimwick {

struct DesktopNotification {
    std::string summary;
    /// Plain text, UTF-8 where the caller has it; the service escapes what its protocol needs.
    std::string body;
    /// Of passing interest: low urgency, not kept in a history.
    bool transient = false;
};

/// The desktop's notifications. Main thread only; never blocks.
class NotificationService {
  public:
    virtual ~NotificationService() = default;
    /// Delivers one notification, in the order of the calls. Nothing is replaced and nothing dropped: without
    /// a notification service the text goes to stderr.
    virtual void deliver(const DesktopNotification& notification) = 0;
};

} // namespace brimwick
