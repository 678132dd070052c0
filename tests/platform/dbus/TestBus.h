#pragma once

#include "fakes/TemporaryFolder.h"

#include <QDBusConnection>
#include <QProcess>

namespace brimwick {

/// A session bus of the test's own, which starts no services.
class TestBus {
  public:
    TestBus() {
        const std::string configuration = folder_.makeFile("bus.conf", R"(<busconfig>
            <type>session</type>
            <listen>unix:dir=)" + folder_.path() + R"(</listen>
            <policy context="default">
                <allow send_destination="*" eavesdrop="true"/>
                <allow eavesdrop="true"/>
                <allow own="*"/>
            </policy>
        </busconfig>)");
        daemon_.setStandardErrorFile(QProcess::nullDevice());
        daemon_.start("dbus-daemon", {"--nofork", "--print-address",
                                      "--config-file=" + QString::fromStdString(configuration)});
        if (daemon_.waitForReadyRead()) address_ = QString::fromUtf8(daemon_.readLine().trimmed());
    }
    TestBus(const TestBus&) = delete;
    TestBus& operator=(const TestBus&) = delete;
    ~TestBus() {
        stop();
        for (const QString& name : names_) QDBusConnection::disconnectFromBus(name);
    }

    /// A connection that nothing else shares.
    QDBusConnection connect() {
        static int count = 0;
        names_ << QStringLiteral("test-%1").arg(++count);
        return QDBusConnection::connectToBus(address_, names_.back());
    }
    void stop() {
        daemon_.terminate();
        daemon_.waitForFinished();
    }

  private:
    TemporaryFolder folder_;
    QProcess daemon_;
    QString address_;
    QStringList names_;
};

} // namespace brimwick
