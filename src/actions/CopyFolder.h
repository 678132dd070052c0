#pragma once

#include "actions/CopyEntry.h"
#include "actions/EntryStamp.h"
#include "actions/FolderMark.h"
#include "actions/TransferProgress.h"
#include "actions/TreeWalk.h"

#include <tl/expected.hpp>

namespace brimwick {

/// How copies in this folder are flushed when all of its file system can be flushed at once afterwards: a
/// file system in user space is not told of that, and one on another machine may not tell what went wrong.
Flush flushFor(const FolderMark& folder);

/// Copies a whole folder under a name that must be free. Hard links among its files stay hard links.
/// `operation_not_supported` for a pipe, socket or device in it, `invalid_argument` when the copy itself lies
/// in it, `operation_canceled` when somebody ended it. A failed copy is left as it is, for the caller to
/// remove.
tl::expected<CopyLog, TreeWalkError> copyFolder(const NameInFolder& from, const NameInFolder& to, Flush flush,
                                                TransferProgress& progress);

} // namespace brimwick
