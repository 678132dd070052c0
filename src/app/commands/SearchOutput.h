#pragma once

#include "model/FolderIndex.h"
#include "platform/ports/InstanceRequest.h"

#include <vector>

namespace brimwick {

/// How the folders found are written down.
enum class SearchFormat {
    /// One path a line, its bytes as they are.
    lines,
    /// The same for a terminal: control characters become question marks.
    terminal,
    /// Each path closed by a NUL, which no path contains.
    nulSeparated,
    /// One JSON array, one object a line: "name" as the picker shows it, "path", and, for a path that is not
    /// UTF-8, "path_bytes": its bytes in base64. Texts hold U+FFFD in place of each byte that is none.
    json,
};

/// Writes the folders down in their order. False when the sink took no more.
bool writeSearchResults(const FolderIndex& index, const std::vector<FolderNumber>& folders,
                        SearchFormat format, const ByteSink& output);

} // namespace brimwick
