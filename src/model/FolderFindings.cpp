#include "model/FolderFindings.h"

#include "model/FolderListing.h"

#include <stdexcept>

namespace brimwick {

FolderRange FolderFindings::addSubfoldersOf(int directory, std::size_t mostSubfolders) {
    const std::size_t firstName = names_.size();
    appendSubfolderNames(directory, names_, mostSubfolders);
    return addFoldersNamedFrom(firstName);
}

FolderRange FolderFindings::addNames(std::string_view names) {
    const std::size_t firstName = names_.size();
    names_ += names;
    return addFoldersNamedFrom(firstName);
}

FolderRange FolderFindings::addFoldersNamedFrom(std::size_t firstName) {
    if (names_.size() >= std::numeric_limits<std::uint32_t>::max())
        throw std::length_error("too many folders to index");
    FolderRange added{static_cast<std::uint32_t>(folders_.size()), 0};
    for (std::size_t name = firstName; name < names_.size(); name = names_.find('\0', name) + 1)
        folders_.push_back({static_cast<std::uint32_t>(name), 0, 0});
    added.end = static_cast<std::uint32_t>(folders_.size());
    return added;
}

std::string_view FolderFindings::names(FolderRange folders) const {
    const std::size_t first = folders_[folders.first].name;
    const std::size_t end = folders.end < folders_.size() ? folders_[folders.end].name : names_.size();
    return std::string_view(names_).substr(first, end - first);
}

FolderRange FolderFindings::subfolders(std::uint32_t folder) const {
    const Folder& entry = folders_[folder];
    return {entry.firstSubfolder, entry.firstSubfolder + entry.subfolderCount};
}

void FolderFindings::setSubfolders(std::uint32_t folder, FolderRange subfolders) {
    folders_[folder].firstSubfolder = subfolders.first;
    folders_[folder].subfolderCount = subfolders.size();
}

const Subtrees* FolderFindings::followingSubtrees(std::uint32_t folder) const {
    if (following_.empty()) return nullptr;
    const auto found = following_.find(folder);
    return found == following_.end() ? nullptr : found->second;
}

void FolderFindings::setFollowingSubtrees(std::uint32_t folder, const Subtrees* following) {
    following_[folder] = following;
}

} // namespace brimwick
