#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace brimwick {

/// What a second start of the program asks of the one that runs.
struct InstanceRequest {
    std::string verb;
    /// Bytes; paths are absolute, since the two programs need not stand in the same folder.
    std::vector<std::string> arguments;
};

/// What came of a request.
struct RequestResult {
    /// As the exit code of a command: 0 when it was done.
    int exitCode = 0;
    /// Why it was not done, as one line for the user; else empty.
    std::string message;
};

/// Takes in what a command prints, some of it at a time; waits while the reader is slow. False when nobody
/// will read more.
using ByteSink = std::function<bool(std::string_view)>;

} // namespace brimwick
