#pragma once

#include "platform/ports/InstanceRequest.h"

#include <QDBusMessage>
#include <QDBusUnixFileDescriptor>

#include <optional>

namespace brimwick {

/// How one start of the program talks to another on the session bus: one method, whose arguments are the verb
/// (s), its arguments (aay) and the pipe to print to (h), and whose answer is the exit code (i) and a message
/// for the user (ay). The answer comes when everything is printed.
namespace InstanceProtocol {

inline constexpr const char* busName = "org.brimwick.Brimwick";
inline constexpr const char* objectPath = "/org/brimwick/Brimwick";
inline constexpr const char* interface = "org.brimwick.Brimwick";
inline constexpr const char* method = "Request";
inline constexpr const char* introspection = R"(<interface name="org.brimwick.Brimwick">
    <method name="Request">
      <arg name="verb" type="s" direction="in"/>
      <arg name="arguments" type="aay" direction="in"/>
      <arg name="output" type="h" direction="in"/>
      <arg name="exit_code" type="i" direction="out"/>
      <arg name="message" type="ay" direction="out"/>
    </method>
  </interface>
)";

QVariantList argumentsOf(const InstanceRequest& request, const QDBusUnixFileDescriptor& output);
/// Nothing for arguments of other types.
std::optional<InstanceRequest> requestIn(const QDBusMessage& call);
/// Invalid when requestIn() yields nothing.
QDBusUnixFileDescriptor outputIn(const QDBusMessage& call);

QVariantList argumentsOf(const RequestResult& result);
/// Nothing when the message is no answer to a request.
std::optional<RequestResult> resultIn(const QDBusMessage& reply);

} // namespace InstanceProtocol

} // namespace brimwick
