#pragma once

#include "actions/OpenFolder.h"
#include "actions/TransferProgress.h"

#include <tl/expected.hpp>

#include <cstdint>
#include <string>

namespace brimwick {

/// Refuses a copy that cannot fit into the free space of its target, before it is begun:
/// `no_space_on_device`, and the description says how much it takes. Where the file system may take less than
/// the files hold, or does not say what is free, nothing is refused.
tl::expected<void, FileError> checkFreeSpace(const ItemPlace& source, const OpenFolder& target,
                                             std::int64_t knownSize, const TransferProgress& progress);

/// How many bytes a file holds, or all files in a folder; 0 for anything else, and for what cannot be read.
/// Less when it is cancelled meanwhile.
std::int64_t sizeOfItem(const std::string& path, const TransferProgress& progress);

/// "999 bytes", "1.5 kB", "20 GB".
std::string sizeText(std::uint64_t bytes);

} // namespace brimwick
