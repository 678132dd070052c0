#pragma once

#include "model/BWSelectedFileOrFolder.h"
#include "model/FolderIndexer.h"
#include "model/SearchPresenter.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

namespace brimwick {

/// The folders that a search found, with the index that numbers them: a newer one may have been published
/// since.
struct SearchResults {
    std::shared_ptr<const FolderIndex> index = std::make_shared<const FolderIndex>();
    std::vector<FolderNumber> entries;
};

/// Finds the folders whose name contains what was typed. Main thread only.
class FolderSearch {
  public:
    /// The indexer must outlive the search.
    explicit FolderSearch(const FolderIndexer& indexer) : indexer_(indexer) {}
    /// Until then nothing is searched. The presenter must outlive the last search.
    void setPresenter(SearchPresenter& presenter) { presenter_ = &presenter; }

    /// Replaces the results, selects the first and sets the prompt. Does nothing while the window is in
    /// phantom mode.
    void searchFor(std::string_view text);

    /// Gives the results up, and with them the index that they are of.
    void forgetResults();

    const SearchResults& searchResults() const { return searchResults_; }
    /// Name and place of the result of a row, below the number of results, as the walk found them. The name
    /// is valid until the next search.
    std::string_view displayNameAt(std::size_t row) const;
    std::string pathAt(std::size_t row) const;
    /// As for the walk, all results are folders; only the Trash is looked at, for being empty or full.
    std::optional<Icon> iconAt(std::size_t row) const;
    /// The result of a row, looked up on disk at every call.
    BWSelectedFileOrFolder entryAt(std::size_t row) const;

  private:
    const FolderIndexer& indexer_;
    SearchPresenter* presenter_ = nullptr;
    SearchResults searchResults_;
};

} // namespace brimwick
