#pragma once

#include "actions/Destination.h"
#include "actions/TransferContext.h"

#include <sys/stat.h>

namespace brimwick {

/// Copies a file, a symbolic link (itself) or a whole folder. Replaces nothing: a taken name makes it try the
/// next one. The path at which the copy lies in the end; when it fails nothing is left behind, unless the
/// error says so.
tl::expected<std::string, FileError> copyItem(const std::string& source, const Destination& destination,
                                              const TransferContext& context);

/// The status of the source. Refuses what would never end: a folder into itself or into a folder below it.
/// `verb` is for the text: "copy".
tl::expected<struct stat, FileError>
statusUnlessInsideItself(const std::string& verb, const ItemPlace& source, const OpenFolder& target);

} // namespace brimwick
