#pragma once

#include "model/FolderTree.h"
#include "model/SubtreeExchange.h"

#include <cstddef>

namespace brimwick {

/// How much a walk found at most.
struct WalkedSizes {
    std::size_t folders = 0;
    std::size_t nameBytes = 0;
};

/// Adds to the tree what a walk found below the parent: depth first, each folder before its subfolders, these
/// in the order of the listing, whichever thread came to them. Throws std::length_error when the tree is
/// full.
void appendInOrder(const Subtrees& walked, const WalkedSizes& sizes, FolderNumber parent,
                   FolderTree& folders);

} // namespace brimwick
