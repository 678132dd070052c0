#pragma once

#include <string>
#include <string_view>
#include <system_error>

namespace brimwick {

/// Why a file operation did not succeed.
struct FileError {
    /// For the user: what happened, which path, the system's reason.
    std::string description;
    std::error_code code;
};

/// `Could not read "/a/b": Permission denied`.
FileError fileError(std::string_view whatHappened, const std::string& path, std::error_code reason);

/// `Could not move "/a/b" to "/c/b": Permission denied`.
FileError fileError(std::string_view whatHappened, const std::string& source, const std::string& destination,
                    std::error_code reason);

} // namespace brimwick
