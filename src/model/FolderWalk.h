#pragma once

#include "model/FileDescriptor.h"
#include "model/FolderTree.h"

#include <sys/types.h>

#include <functional>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

namespace brimwick {

/// Adds root folders and all that lies below them to a tree: depth first, each folder before its subfolders,
/// these in the order of the listing. Dot-named folders, file packages and links are left out; a root never
/// is. However deep the folders lie, few are open at a time. One thread.
class FolderWalk {
  public:
    /// Receives the name of each subfolder just before the walk descends into it.
    using FolderNameObserver = std::function<void(std::string_view)>;

    /// The tree must outlive the walk.
    FolderWalk(FolderTree& folders, FolderNameObserver observer, std::stop_token stop = {});

    /// A root that cannot be listed is added alone. False when the walk was told to stop; the tree is
    /// incomplete then.
    bool addRootDirectoryAndSubFoldersToIndex(const std::string& rootPath);

  private:
    /// A folder on the way down to the one being listed, with subfolders yet to be walked.
    struct Level {
        FolderNumber folder = 0;
        /// Not open while the walk is far below.
        FileDescriptor directory;
        dev_t device = 0;
        ino_t inode = 0;
        /// Positions in `pendingNames_`, which the deepest level's names end.
        std::size_t firstName = 0;
        std::size_t nextName = 0;
    };

    bool deepEnumerateAllSubfoldersOfFolderWithPath(const std::string& path, FolderNumber folder);
    void descendIntoNextSubfolder();
    void enter(FolderNumber folder, FileDescriptor directory);
    void leave(const std::string& rootPath);
    void closeLevelFarAbove();
    FileDescriptor reopenedFromRoot(const std::string& rootPath) const;

    FolderTree& folders_;
    FolderNameObserver observer_;
    std::stop_token stop_;
    std::vector<Level> levels_;
    std::string pendingNames_;
};

} // namespace brimwick
