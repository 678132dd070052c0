#include "model/FolderTree.h"

#include <algorithm>
#include <limits>
#include <stdexcept>

namespace brimwick {
namespace {

constexpr FolderNumber noParent = std::numeric_limits<FolderNumber>::max();

} // namespace

FolderNumber FolderTree::addRoot(std::string path, std::string_view displayName) {
    const FolderNumber folder = add(noParent, displayName);
    roots_.push_back({folder, std::move(path)});
    return folder;
}

FolderNumber FolderTree::addSubfolder(FolderNumber parent, std::string_view name) {
    return add(parent, name);
}

FolderNumber FolderTree::add(FolderNumber parent, std::string_view displayName) {
    constexpr std::size_t most = std::numeric_limits<std::uint32_t>::max();
    if (size() >= noParent || displayName.size() > most - names_.size())
        throw std::length_error("too many folders to index");
    const auto folder = static_cast<FolderNumber>(size());
    names_ += displayName;
    nameEnds_.push_back(static_cast<std::uint32_t>(names_.size()));
    parents_.push_back(parent);
    return folder;
}

std::string_view FolderTree::displayName(FolderNumber folder) const {
    const std::uint32_t start = folder == 0 ? 0 : nameEnds_[folder - 1];
    return std::string_view(names_).substr(start, nameEnds_[folder] - start);
}

std::optional<FolderNumber> FolderTree::parent(FolderNumber folder) const {
    if (parents_[folder] == noParent) return std::nullopt;
    return parents_[folder];
}

std::string FolderTree::path(FolderNumber folder) const {
    std::vector<FolderNumber> below;
    for (; parents_[folder] != noParent; folder = parents_[folder]) below.push_back(folder);
    const auto root =
        std::ranges::lower_bound(roots_, folder, {}, [](const Root& candidate) { return candidate.folder; });
    if (below.empty()) return root->path;
    std::string path = root->path;
    if (path.ends_with('/')) path.pop_back();
    for (auto descendant = below.rbegin(); descendant != below.rend(); ++descendant)
        path.append(1, '/').append(displayName(*descendant));
    return path;
}

void FolderTree::reserve(std::size_t folders, std::size_t nameBytes) {
    // Exactly for the first, and otherwise in steps that grow, however many roots follow each other.
    const auto enough = [](std::size_t wanted, std::size_t size) {
        return std::max(wanted, size + size / 2);
    };
    if (nameBytes > names_.capacity()) names_.reserve(enough(nameBytes, names_.size()));
    if (folders <= parents_.capacity()) return;
    nameEnds_.reserve(enough(folders, size()));
    parents_.reserve(enough(folders, size()));
}

void FolderTree::shrink() {
    names_.shrink_to_fit();
    nameEnds_.shrink_to_fit();
    parents_.shrink_to_fit();
}

} // namespace brimwick
