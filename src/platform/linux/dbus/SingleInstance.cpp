#include "platform/linux/dbus/SingleInstance.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>

namespace brimwick {

SingleInstance::SingleInstance() {
    const QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) return;
    const auto taken = bus.interface()->registerService("org.brimwick.Brimwick");
    anotherIsRunning_ = taken.isValid() && taken.value() != QDBusConnectionInterface::ServiceRegistered;
}

} // namespace brimwick
