#pragma once

#include "actions/OpenFolder.h"

#include <sys/stat.h>
#include <tl/expected.hpp>

#include <string>

namespace brimwick {

/// The status of the source. Refuses what would never end: a folder into itself or into a folder below it.
/// `verb` is for the text: "copy".
tl::expected<struct stat, FileError>
statusUnlessInsideItself(const std::string& verb, const ItemPlace& source, const OpenFolder& target);

} // namespace brimwick
