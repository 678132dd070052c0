#pragma once

#include "model/FoldedNames.h"
#include "model/FolderTree.h"
#include "platform/ports/FolderList.h"

#include <string>
#include <string_view>
#include <vector>

namespace brimwick {

/// The folders that the picker offers, made ready for searching. Never changes: shared between threads as
/// std::shared_ptr<const FolderIndex> and replaced whole.
class FolderIndex : public FolderList {
  public:
    /// Without any folder.
    FolderIndex() : FolderIndex(FolderTree()) {}
    /// Sorts and folds every name once, so that a search needs to do neither; with several threads where that
    /// pays.
    explicit FolderIndex(FolderTree folders);

    std::size_t size() const override { return folders_.size(); }
    std::optional<FolderNumber> parent(FolderNumber folder) const override { return folders_.parent(folder); }
    std::string_view fileName(FolderNumber folder) const override { return folders_.displayName(folder); }
    std::string path(FolderNumber folder) const override { return folders_.path(folder); }
    /// Empty for a root that was not found on disk. Valid as long as the index.
    std::string_view displayName(FolderNumber folder) const { return folders_.displayName(folder); }

    /// The folders whose display name contains the text, case and diacritics left out of account; by name in
    /// the order of its bytes, equal names in the order of the index. An empty text is contained in no name.
    std::vector<FolderNumber> search(std::string_view text) const;
    /// The same, with the room of an earlier search.
    void search(std::string_view text, std::vector<FolderNumber>& found) const;

    /// What the searches go through: every folded name, closed by a NUL.
    std::string_view searchedBytes() const { return foldedNames_.bytes(); }

  private:
    FolderTree folders_;
    /// Those that have a name, in its order.
    FoldedNames foldedNames_;
};

} // namespace brimwick
