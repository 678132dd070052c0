#pragma once

#include "platform/ports/NotificationService.h"

#include <QDBusConnection>
#include <QDBusPendingCall>
#include <QObject>

#include <deque>
#include <functional>

namespace brimwick {

/// Notifications by the desktop's notification service on the session bus, handed over without waiting.
class DBusNotificationService : public NotificationService {
  public:
    using Fallback = std::function<void(const DesktopNotification&)>;

    /// Where there is no bus or no service, a notification goes to stderr, as one line, and to the fallback.
    explicit DBusNotificationService(const QDBusConnection& bus, Fallback fallback = {});
    /// What was never handed over goes to stderr.
    ~DBusNotificationService() override;

    void deliver(const DesktopNotification& notification) override;

  private:
    struct HandedOver {
        DesktopNotification notification;
        QDBusPendingCall call;
    };

    void handOver();
    void send(const DesktopNotification& notification);
    void deliverElsewhere(const DesktopNotification& notification);

    QDBusConnection bus_;
    Fallback fallback_;
    std::deque<DesktopNotification> waiting_;
    /// What the service has not answered yet, and what came after that. In the order of delivery, so that
    /// failures are reported in that order too.
    std::deque<HandedOver> handedOver_;
    /// The parent of what awaits the answers.
    QObject answers_;
};

} // namespace brimwick
