#include "model/FolderIndex.h"

#include "model/NameFolding.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <stdexcept>

namespace brimwick {
namespace {

/// The first bytes of a name as a number that orders as they do; most comparisons end here.
std::uint64_t sortingPrefix(std::string_view name) {
    std::uint64_t prefix = 0;
    for (std::size_t i = 0; i < sizeof prefix; ++i)
        prefix = prefix << 8 | (i < name.size() ? static_cast<unsigned char>(name[i]) : 0U);
    return prefix;
}

} // namespace

FolderIndex::FolderIndex(FolderTree folders) : folders_(std::move(folders)) {
    folders_.shrink();
    sortByName();
    foldNames();
}

void FolderIndex::sortByName() {
    struct Named {
        std::uint64_t prefix;
        FolderNumber folder;
    };
    std::vector<Named> named;
    named.reserve(size());
    for (FolderNumber folder = 0; folder < size(); ++folder)
        if (!displayName(folder).empty()) named.push_back({sortingPrefix(displayName(folder)), folder});

    std::ranges::sort(named, [this](const Named& left, const Named& right) {
        if (left.prefix != right.prefix) return left.prefix < right.prefix;
        const int order = displayName(left.folder).compare(displayName(right.folder));
        return order != 0 ? order < 0 : left.folder < right.folder;
    });

    byName_.reserve(named.size());
    for (const Named& entry : named) byName_.push_back(entry.folder);
}

void FolderIndex::foldNames() {
    foldedStarts_.reserve(byName_.size() + 1);
    foldedStarts_.push_back(0);
    for (const FolderNumber folder : byName_) {
        appendFoldedName(displayName(folder), foldedNames_);
        foldedNames_ += '\0';
        if (foldedNames_.size() > std::numeric_limits<std::uint32_t>::max())
            throw std::length_error("too many folders to index");
        foldedStarts_.push_back(static_cast<std::uint32_t>(foldedNames_.size()));
    }
    foldedNames_.shrink_to_fit();
}

std::vector<FolderNumber> FolderIndex::search(std::string_view text) const {
    std::vector<FolderNumber> found;
    const std::string folded = foldedName(text);
    if (folded.empty() || folded.find('\0') != std::string::npos) return found;

    const char* const names = foldedNames_.data();
    std::size_t rank = 0;
    while (rank < byName_.size()) {
        const std::size_t start = foldedStarts_[rank];
        const void* hit = memmem(names + start, foldedNames_.size() - start, folded.data(), folded.size());
        if (hit == nullptr) break;
        const auto position = static_cast<std::size_t>(static_cast<const char*>(hit) - names);
        while (foldedStarts_[rank + 1] <= position) ++rank;
        found.push_back(byName_[rank]);
        ++rank;
    }
    return found;
}

} // namespace brimwick
