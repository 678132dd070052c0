#include "model/FolderSearch.h"

namespace brimwick {

void FolderSearch::searchFor(std::string_view text) {
    if (presenter_ == nullptr || presenter_->isInPhantomMode()) return;
    searchResults_ = {indexer_.index(), indexer_.index()->search(text)};
    presenter_->resultsWereReplaced();
    presenter_->selectFirstResult();
    if (text.empty())
        presenter_->showDefaultPrompt();
    else if (searchResults_.entries.empty())
        presenter_->showNoFoldersFound();
    else
        presenter_->hidePrompt();
}

BWSelectedFileOrFolder FolderSearch::entryAt(std::size_t row) const {
    return BWSelectedFileOrFolder::fileOrFolderWithPath(
        searchResults_.index->path(searchResults_.entries.at(row)));
}

} // namespace brimwick
