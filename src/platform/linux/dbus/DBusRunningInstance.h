#pragma once

#include "platform/ports/RunningInstance.h"

#include <QDBusConnection>

namespace brimwick {

/// The program that has the name on the session bus.
class DBusRunningInstance : public RunningInstance {
  public:
    /// The bus is asked for at the first request.
    explicit DBusRunningInstance(std::function<QDBusConnection()> bus = QDBusConnection::sessionBus)
        : bus_(std::move(bus)) {}

    std::optional<RequestResult> request(const InstanceRequest& request, const ByteSink& output) override;

  private:
    std::function<QDBusConnection()> bus_;
};

} // namespace brimwick
