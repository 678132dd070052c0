#include "platform/linux/dbus/InstanceProtocol.h"

#include <QDBusArgument>
#include <QDBusMetaType>

namespace brimwick::InstanceProtocol {

QVariantList argumentsOf(const InstanceRequest& request, const QDBusUnixFileDescriptor& output) {
    qDBusRegisterMetaType<QByteArrayList>();
    QByteArrayList arguments;
    for (const std::string& argument : request.arguments) arguments << QByteArray::fromStdString(argument);
    return {QString::fromStdString(request.verb), QVariant::fromValue(arguments),
            QVariant::fromValue(output)};
}

std::optional<InstanceRequest> requestIn(const QDBusMessage& call) {
    if (call.signature() != "saayh") return std::nullopt;
    InstanceRequest request{.verb = call.arguments().at(0).toString().toStdString(), .arguments = {}};
    for (const QByteArray& argument : qdbus_cast<QByteArrayList>(call.arguments().at(1)))
        request.arguments.push_back(argument.toStdString());
    return request;
}

QDBusUnixFileDescriptor outputIn(const QDBusMessage& call) {
    return call.arguments().value(2).value<QDBusUnixFileDescriptor>();
}

QVariantList argumentsOf(const RequestResult& result) {
    return {result.exitCode, QByteArray::fromStdString(result.message)};
}

std::optional<RequestResult> resultIn(const QDBusMessage& reply) {
    if (reply.type() != QDBusMessage::ReplyMessage || reply.signature() != "iay") return std::nullopt;
    return RequestResult{.exitCode = reply.arguments().at(0).toInt(),
                         .message = reply.arguments().at(1).toByteArray().toStdString()};
}

} // namespace brimwick::InstanceProtocol
