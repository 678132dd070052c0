#pragma once

#include "actions/TransferProgress.h"

#include <sys/types.h>

#include <system_error>

namespace brimwick {

/// Copies the first `size` bytes of one open file into another, empty one: shared blocks where the file
/// system can, holes kept as holes. `no_message_available` when the source turned out to be shorter,
/// `operation_canceled` when somebody ended it.
[[nodiscard]] std::error_code copyFileData(int from, int to, off_t size, TransferProgress& progress);

} // namespace brimwick
