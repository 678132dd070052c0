#pragma once

#include "model/FolderTree.h"
#include "model/Parallel.h"
#include "model/SubtreeWalker.h"

#include <stop_token>
#include <string>

namespace brimwick {

/// Adds root folders and all that lies below them to a tree: depth first, each folder before its subfolders,
/// these in the order of the listing. Dot-named folders, file packages and links are left out; a root never
/// is. Used by one thread, which others help.
class FolderWalk {
  public:
    /// The tree must outlive the walk.
    FolderWalk(FolderTree& folders, FolderNameObserver observer, std::stop_token stop = {},
               unsigned threads = usualThreads());

    /// A root that cannot be listed is added alone. False when the walk was told to stop; the tree is
    /// incomplete then. Throws std::bad_alloc, std::length_error and, when it may open no further folder,
    /// std::system_error.
    bool addRootDirectoryAndSubFoldersToIndex(const std::string& rootPath);

  private:
    bool deepEnumerateAllSubfoldersOfFolderWithPath(const std::string& path, FolderNumber folder);

    FolderTree& folders_;
    FolderNameObserver observer_;
    std::stop_token stop_;
    unsigned threads_;
};

} // namespace brimwick
