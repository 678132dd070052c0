#pragma once

#include "actions/CopyEntry.h"
#include "actions/EntryStamp.h"
#include "actions/TreeWalk.h"

#include <tl/expected.hpp>

#include <chrono>
#include <optional>
#include <stop_token>

namespace brimwick {

enum class FileMatch {
    Same,     ///< both files hold the same
    Beginning ///< what one holds, the other one holds at its beginning
};

struct ComparedTrees {
    /// A file, a symbolic link or a folder.
    NameInFolder item;
    NameInFolder other;
    FileMatch files = FileMatch::Same;
    /// Nothing of the item may have changed later than this, since the epoch.
    std::optional<std::chrono::nanoseconds> unchangedSince;
};

/// The entries of both that were compared with each other, in one order.
struct SameEntries {
    CopyLog item;
    CopyLog other;
};

/// Whether the other one has every entry of the item under the same name, of the same kind and with the same
/// content; it may have more. What was compared, or the first difference, `device_or_resource_busy` for
/// the code when it is none of the system's; `operation_canceled` when the token asked to stop.
tl::expected<SameEntries, TreeWalkError> compareTrees(const ComparedTrees& trees,
                                                      const std::stop_token& stop);

/// Whether every entry of a log still is what and where it was, in the item that goes by this name now; it
/// may have others besides.
[[nodiscard]] std::error_code checkEntries(const NameInFolder& item, const CopyLog& log);

} // namespace brimwick
