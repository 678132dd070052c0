#pragma once

#include "platform/linux/process/WakeUp.h"
#include "platform/ports/InstanceService.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusUnixFileDescriptor>
#include <QDBusVirtualObject>

#include <list>
#include <thread>
#include <vector>

namespace brimwick {

/// Whether this process is the user's only Brimwick on this session bus, and, if so, what the others ask of
/// it. Without a bus there is no telling. Made before anything that answers requests: a request must find the
/// object wherever it finds the name. Main thread; ends promptly, however slowly its answers are read.
class SingleInstance : public InstanceService, private QDBusVirtualObject {
  public:
    /// Asks the bus for the program's name.
    explicit SingleInstance(const QDBusConnection& bus = QDBusConnection::sessionBus());
    SingleInstance(const SingleInstance&) = delete;
    SingleInstance& operator=(const SingleInstance&) = delete;
    ~SingleInstance() override;

    bool anotherIsRunning() const { return anotherIsRunning_; }
    void setHandler(Handler handler) override;

  private:
    struct Call {
        InstanceRequest request;
        QDBusMessage reply;
        QDBusUnixFileDescriptor output;
    };
    struct Job {
        QDBusMessage reply;
        /// Written by the thread, read once that has ended.
        RequestResult result;
        std::jthread thread;
    };

    QString introspect(const QString& path) const override;
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;
    void handOver(const Call& call);
    void start(const Call& call, Work work);
    void finish(Job& job);

    QDBusConnection bus_;
    bool anotherIsRunning_ = false;
    Handler handler_;
    std::vector<Call> waiting_;
    WakeUp stop_;
    std::list<Job> jobs_;
};

} // namespace brimwick
