#pragma once

#include <sys/stat.h>

#include <string>
#include <system_error>

namespace brimwick {

/// Gives an open file or folder the extended attributes and access lists of another one, and the owner, mode
/// and times of `source`. Attributes are left out only where the file system has none at all; a foreign owner
/// only where the user may not set it, and then without the set-id bits; mode and times only of a new file
/// that the file system gives to another user. `copy` is what the first one is now.
[[nodiscard]] std::error_code copyMetadata(int from, int to, const struct stat& source,
                                           const struct stat& copy);

/// The same for a symbolic link: its owner and times.
[[nodiscard]] std::error_code copyLinkMetadata(int folder, const std::string& name,
                                               const struct stat& source);

} // namespace brimwick
