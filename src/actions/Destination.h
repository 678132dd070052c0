#pragma once

#include "actions/OpenFolder.h"

#include <tl/expected.hpp>

#include <functional>
#include <string>
#include <system_error>

namespace brimwick {

/// Where an item shall lie, and what to do when the name is taken there.
struct Destination {
    std::string path;
    /// Yields another path in the same folder, each time it is asked. Empty: a taken name is an error.
    std::function<std::string()> nextPath;
    /// Called before an item takes a name; `file_exists` makes the name count as taken. May be empty.
    std::function<std::error_code(const std::string& name)> reserve;
    /// Called for a reserved name that the item did not get after all. May be empty.
    std::function<void(const std::string& name)> withdraw;
};

/// Lets `attempt` try the destination's name and then the next ones until it answers anything but
/// `file_exists`. Returns the path of the name that it got.
tl::expected<std::string, std::error_code>
takeFreeName(const Destination& destination,
             const std::function<std::error_code(const std::string&)>& attempt);

} // namespace brimwick
