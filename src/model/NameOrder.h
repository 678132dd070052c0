#pragma once

#include "model/FolderTree.h"

#include <vector>

namespace brimwick {

/// The folders that have a name, by the bytes of their display names, equal names in the order of the tree.
/// Throws std::bad_alloc.
std::vector<FolderNumber> foldersByName(const FolderTree& folders);

} // namespace brimwick
