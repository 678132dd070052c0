#include "model/FolderIndex.h"

#include "model/NameFolding.h"
#include "model/NameOrder.h"

namespace brimwick {

FolderIndex::FolderIndex(FolderTree folders)
    : folders_(std::move(folders)), byName_(foldersByName(folders_)), foldedNames_(folders_, byName_) {
    folders_.shrink();
}

std::vector<FolderNumber> FolderIndex::search(std::string_view text) const {
    std::vector<FolderNumber> found;
    search(text, found);
    return found;
}

void FolderIndex::search(std::string_view text, std::vector<FolderNumber>& found) const {
    found.clear();
    foldedNames_.find(foldedName(text), byName_, found);
}

std::size_t FolderIndex::overheadBytes() const {
    return folders_.overheadBytes() + byName_.capacity() * sizeof(FolderNumber) +
           foldedNames_.overheadBytes();
}

} // namespace brimwick
