#pragma once

#include "model/FolderTree.h"

#include <string>
#include <string_view>
#include <vector>

namespace brimwick {

/// The folders that the picker offers, made ready for searching. Never changes: shared between threads as
/// std::shared_ptr<const FolderIndex> and replaced whole.
class FolderIndex {
  public:
    /// Without any folder.
    FolderIndex() : FolderIndex(FolderTree()) {}
    /// Sorts and folds every name once, so that a search needs to do neither.
    explicit FolderIndex(FolderTree folders);

    std::size_t size() const { return folders_.size(); }
    std::string path(FolderNumber folder) const { return folders_.path(folder); }
    /// Empty for a root that was not found on disk. Valid as long as the index.
    std::string_view displayName(FolderNumber folder) const { return folders_.displayName(folder); }

    /// The folders whose display name contains the text, case and diacritics left out of account; by name in
    /// the order of its bytes, equal names in the order of the index. An empty text is contained in no name.
    std::vector<FolderNumber> search(std::string_view text) const;

  private:
    void sortByName();
    void foldNames();

    FolderTree folders_;
    /// The folders that have a name.
    std::vector<FolderNumber> byName_;
    /// Their folded names, in the same order, each closed by a NUL, which no name contains.
    std::string foldedNames_;
    /// Where each of them starts, and where the last one ends.
    std::vector<std::uint32_t> foldedStarts_;
};

} // namespace brimwick
