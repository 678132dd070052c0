#pragma once

#include "actions/TransferProgress.h"

#include <sys/stat.h>

#include <system_error>

namespace brimwick {

/// Copies as much of one open file as its status says into another, empty one: shared blocks where the file
/// system can, holes kept as holes. `copy` receives what the other one is then. `no_message_available` when
/// the source turned out to be shorter, `device_or_resource_busy` when it is longer, `operation_canceled`
/// when somebody ended it.
[[nodiscard]] std::error_code copyFileData(int from, int to, const struct stat& source, struct stat& copy,
                                           TransferProgress& progress);

} // namespace brimwick
