#pragma once

#include <functional>
#include <optional>
#include <string>

namespace brimwick {

/// Runs the body in a child process and yields what it returned, or 100 and more when it crashed.
int inChild(const std::function<int()>& body);

/// The same, with a limit of /proc/sys/user set for the child alone. Nothing where the system does not let
/// us.
std::optional<int> inChildWithOwnLimits(const std::string& limit, int value,
                                        const std::function<int()>& body);

/// The same, where the child may mount and nobody else sees it. Nothing where the system does not let us.
std::optional<int> inChildWithOwnMounts(const std::function<int()>& body);

} // namespace brimwick
