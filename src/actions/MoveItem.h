#pragma once

#include "actions/Destination.h"
#include "actions/TransferContext.h"

namespace brimwick {

/// Moves anything to another name or folder, on any file system. Replaces nothing: a taken name makes it try
/// the next one. Between file systems the source goes only when a complete copy is safely on the disk, and
/// stays when it changed meanwhile; pipes, sockets and devices cannot move there.
///
/// Within one file system the new name is durable once the changed folders of the context are.
///
/// The path at which the item lies in the end. When it fails the source is where it was and nothing is left
/// behind, unless the error says that the item was moved or copied.
tl::expected<std::string, FileError> moveItem(const std::string& source, const Destination& destination,
                                              const TransferContext& context);

} // namespace brimwick
