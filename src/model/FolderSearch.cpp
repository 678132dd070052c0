#include "model/FolderSearch.h"

#include "model/PathText.h"

namespace brimwick {

void FolderSearch::searchFor(std::string_view text) {
    if (presenter_ == nullptr || presenter_->isInPhantomMode()) return;
    searchResults_.index = indexer_.index();
    searchResults_.index->search(text, searchResults_.entries);
    presenter_->resultsWereReplaced();
    presenter_->selectFirstResult();
    if (text.empty())
        presenter_->showDefaultPrompt();
    else if (searchResults_.entries.empty())
        presenter_->showNoFoldersFound();
    else
        presenter_->hidePrompt();
}

void FolderSearch::forgetResults() {
    searchResults_ = {};
    if (presenter_ != nullptr) presenter_->resultsWereReplaced();
}

std::string_view FolderSearch::displayNameAt(std::size_t row) const {
    return searchResults_.index->displayName(searchResults_.entries.at(row));
}

std::string FolderSearch::pathAt(std::size_t row) const {
    return searchResults_.index->path(searchResults_.entries.at(row));
}

std::optional<Icon> FolderSearch::iconAt(std::size_t row) const {
    // Only the Trash is shown by another name than its own.
    if (displayNameAt(row) != lastPathComponent(pathAt(row))) return entryAt(row).icon();
    return Icon{Icon::Source::Folder, {}};
}

BWSelectedFileOrFolder FolderSearch::entryAt(std::size_t row) const {
    return BWSelectedFileOrFolder::fileOrFolderWithPath(pathAt(row));
}

} // namespace brimwick
