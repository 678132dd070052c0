#include "platform/linux/dbus/SingleInstance.h"

#include "platform/linux/dbus/InstanceProtocol.h"
#include "platform/linux/process/PipeWriter.h"

#include <QDBusConnectionInterface>

#include <exception>
#include <system_error>
#include <utility>

namespace brimwick {

namespace {

RequestResult resultOf(const InstanceService::Work& work, const ByteSink& output) {
    try {
        return work(output);
    } catch (const std::exception& failure) {
        return {.exitCode = 1, .message = failure.what()};
    }
}

} // namespace

SingleInstance::SingleInstance(const QDBusConnection& bus) : bus_(bus) {
    if (!bus_.isConnected()) return;
    bus_.registerVirtualObject(InstanceProtocol::objectPath, this);
    const auto taken = bus_.interface()->registerService(InstanceProtocol::busName);
    anotherIsRunning_ = taken.isValid() && taken.value() != QDBusConnectionInterface::ServiceRegistered;
}

SingleInstance::~SingleInstance() {
    // The name goes first, as it came last.
    if (!anotherIsRunning_) bus_.unregisterService(InstanceProtocol::busName);
    bus_.unregisterObject(InstanceProtocol::objectPath);
    stop_.wake();
    for (Job& job : jobs_) finish(job);
}

void SingleInstance::setHandler(Handler handler) {
    handler_ = std::move(handler);
    if (!handler_) return;
    for (const Call& call : std::exchange(waiting_, {})) handOver(call);
}

QString SingleInstance::introspect(const QString& /*path*/) const {
    return InstanceProtocol::introspection;
}

bool SingleInstance::handleMessage(const QDBusMessage& message, const QDBusConnection& /*connection*/) {
    if (message.interface() != InstanceProtocol::interface || message.member() != InstanceProtocol::method)
        return false;
    auto request = InstanceProtocol::requestIn(message);
    if (!request) return false;
    message.setDelayedReply(true);
    // Not the message itself, which would keep the pipe open.
    Call call{*std::move(request), message.createReply(), InstanceProtocol::outputIn(message)};
    if (handler_)
        handOver(call);
    else
        waiting_.push_back(std::move(call));
    return true;
}

void SingleInstance::handOver(const Call& call) {
    handler_(call.request, [this, call](Work work) { start(call, std::move(work)); });
}

void SingleInstance::start(const Call& call, Work work) {
    const auto job = jobs_.emplace(jobs_.end());
    job->reply = call.reply;
    const auto end = [this, job] {
        finish(*job);
        jobs_.erase(job);
    };
    try {
        job->thread = std::jthread([this, job, end, output = call.output, work = std::move(work)] {
            const PipeWriter writer(output.fileDescriptor(), stop_.descriptor());
            job->result = resultOf(work, [&writer](std::string_view bytes) { return writer.write(bytes); });
            QMetaObject::invokeMethod(this, end, Qt::QueuedConnection);
        });
    } catch (const std::system_error& failure) {
        job->result = {.exitCode = 1, .message = failure.what()};
        end();
    }
}

void SingleInstance::finish(Job& job) {
    if (job.thread.joinable()) job.thread.join();
    if (job.result.exitCode != 0 && job.result.message.empty())
        job.result.message = "Brimwick was quit, or nobody read on";
    job.reply.setArguments(InstanceProtocol::argumentsOf(job.result));
    bus_.send(job.reply);
}

} // namespace brimwick
