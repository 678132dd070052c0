#include "platform/linux/dbus/DBusRunningInstance.h"

#include "platform/linux/dbus/InstanceProtocol.h"

#include <QDBusError>
#include <QDBusPendingCallWatcher>
#include <QEventLoop>
#include <QSocketNotifier>

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>

namespace brimwick {

namespace {

struct Pipe {
    QDBusUnixFileDescriptor reading;
    QDBusUnixFileDescriptor writing;
};

std::optional<Pipe> openPipe() {
    std::array<int, 2> ends = {};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) return std::nullopt;
    Pipe pipe;
    fcntl(ends[0], F_SETFL, O_NONBLOCK);
    pipe.reading.giveFileDescriptor(ends[0]);
    pipe.writing.giveFileDescriptor(ends[1]);
    return pipe;
}

/// Hands on what the pipe holds now. False when no more can come of it, or when the sink takes no more.
bool handOn(const QDBusUnixFileDescriptor& pipe, const ByteSink& output) {
    std::array<char, 65536> bytes;
    for (;;) {
        const ssize_t count = read(pipe.fileDescriptor(), bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return errno == EAGAIN;
        if (count == 0 || !output({bytes.data(), static_cast<std::size_t>(count)})) return false;
    }
}

/// Hands on what comes through the pipe until there is an answer: by then everything has been written.
QDBusMessage awaitAnswer(const QDBusPendingCall& call, QDBusUnixFileDescriptor& pipe,
                         const ByteSink& output) {
    QEventLoop loop;
    QSocketNotifier readable(pipe.fileDescriptor(), QSocketNotifier::Read);
    const auto handOnOrClose = [&] {
        if (!pipe.isValid() || handOn(pipe, output)) return;
        readable.setEnabled(false);
        pipe = {};
    };
    QObject::connect(&readable, &QSocketNotifier::activated, &loop, handOnOrClose);
    const QDBusPendingCallWatcher watcher(call);
    QObject::connect(&watcher, &QDBusPendingCallWatcher::finished, &loop, &QEventLoop::quit);
    loop.exec();
    handOnOrClose();
    return watcher.reply();
}

bool saysThatNoneRuns(const QDBusMessage& reply) {
    return QDBusError(reply).type() == QDBusError::ServiceUnknown ||
           reply.errorName() == "org.freedesktop.DBus.Error.NameHasNoOwner";
}

} // namespace

std::optional<RequestResult> DBusRunningInstance::request(const InstanceRequest& request,
                                                          const ByteSink& output) {
    const QDBusConnection bus = bus_();
    if (!bus.isConnected()) return std::nullopt;
    auto pipe = openPipe();
    if (!pipe) return RequestResult{.exitCode = 1, .message = "no pipe to Brimwick can be made"};
    auto call = QDBusMessage::createMethodCall(InstanceProtocol::busName, InstanceProtocol::objectPath,
                                               InstanceProtocol::interface, InstanceProtocol::method);
    call.setAutoStartService(false);
    call.setArguments(InstanceProtocol::argumentsOf(request, pipe->writing));
    // However long the reader of the output takes: the answer comes after it.
    const QDBusMessage answer = awaitAnswer(bus.asyncCall(call, INT_MAX), pipe->reading, output);
    if (auto result = InstanceProtocol::resultIn(answer)) return result;
    if (saysThatNoneRuns(answer)) return std::nullopt;
    return RequestResult{.exitCode = 1,
                         .message = "Brimwick did not answer: " + answer.errorMessage().toStdString()};
}

} // namespace brimwick
