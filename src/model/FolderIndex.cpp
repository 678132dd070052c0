#include "model/FolderIndex.h"

#include "model/NameFolding.h"
#include "model/NameOrder.h"

namespace brimwick {

FolderIndex::FolderIndex(FolderTree folders)
    : folders_(std::move(folders)), foldedNames_(folders_, foldersByName(folders_)) {
    folders_.shrink();
}

std::vector<FolderNumber> FolderIndex::search(std::string_view text) const {
    std::vector<FolderNumber> found;
    search(text, found);
    return found;
}

void FolderIndex::search(std::string_view text, std::vector<FolderNumber>& found) const {
    found.clear();
    foldedNames_.find(foldedName(text), found);
}

} // namespace brimwick
