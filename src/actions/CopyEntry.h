#pragma once

#include "actions/TransferProgress.h"

#include <sys/stat.h>
#include <tl/expected.hpp>

#include <string>
#include <system_error>

namespace brimwick {

/// A name in an open folder.
struct NameInFolder {
    int folder;
    std::string name;
};

enum class Flush {
    AtOnce,     ///< when the call returns, the data are on the disk
    StartedOnly ///< they are on their way; the caller flushes the whole file system
};

struct CopiedFile {
    struct stat source; ///< while it was read
    struct stat copy;   ///< before it got its mode and times
};

/// Copies a regular file under a name that must be free. `device_or_resource_busy` when it changed while it
/// was read. A failed copy may leave the new file behind.
[[nodiscard]] std::error_code copyRegularFile(const NameInFolder& from, const NameInFolder& to, Flush flush,
                                              CopiedFile& file, TransferProgress& progress);

/// Copies a symbolic link itself. `status` is that of the link.
[[nodiscard]] std::error_code copySymbolicLink(const NameInFolder& from, const NameInFolder& to,
                                               const struct stat& status);

/// What a symbolic link points to.
tl::expected<std::string, std::error_code> readLink(const NameInFolder& link);

} // namespace brimwick
