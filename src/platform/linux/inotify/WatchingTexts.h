#pragma once

#include <cstddef>
#include <string>

namespace brimwick {

/// What the user is told about changes that are noticed late or not at all: one sentence each. `all` counts
/// the folders that would have to be watched, `error` is an errno value.
std::string watchLimitReached(std::size_t unwatched, std::size_t all);
std::string watchingIsUnavailable(int error);
std::string watchingCannotStart(const std::string& reason);
std::string watchingHasEnded(const std::string& reason);

} // namespace brimwick
