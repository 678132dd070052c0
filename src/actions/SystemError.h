#pragma once

#include <cerrno>
#include <system_error>

namespace brimwick {

/// What the last system call said.
inline std::error_code lastSystemError() {
    return {errno, std::generic_category()};
}

} // namespace brimwick
