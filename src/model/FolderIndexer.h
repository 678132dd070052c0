#pragma once

#include "model/BWSelectedFileOrFolder.h"
#include "model/FolderIndex.h"
#include "model/FolderWalk.h"

#include <memory>
#include <stop_token>
#include <string>
#include <vector>

namespace brimwick {

/// Walks the roots, in order, and makes the index of all that was found; nothing when told to stop before the
/// end. Any thread; takes as long as the disk does. Throws as FolderWalk does.
std::shared_ptr<const FolderIndex> indexOfFolders(const std::vector<std::string>& rootPaths,
                                                  const FolderNameObserver& observer,
                                                  const std::stop_token& stop);

/// The root folders that the user chose and the last finished index of them. Main thread only.
class FolderIndexer {
  public:
    /// In the user's order.
    const std::vector<BWSelectedFileOrFolder>& indexedFolders() const { return indexedFolders_; }
    std::vector<BWSelectedFileOrFolder>& indexedFolders() { return indexedFolders_; }
    std::vector<std::string> indexedFolderPaths() const;

    /// Never null: without any folder until the first walk has ended.
    const std::shared_ptr<const FolderIndex>& index() const { return index_; }
    void setIndex(std::shared_ptr<const FolderIndex> index) { index_ = std::move(index); }

  private:
    std::vector<BWSelectedFileOrFolder> indexedFolders_;
    std::shared_ptr<const FolderIndex> index_ = std::make_shared<const FolderIndex>();
};

} // namespace brimwick
