#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace brimwick {

struct Subtrees;

/// Folders that lie one after the other in the findings.
struct FolderRange {
    std::uint32_t first = 0;
    std::uint32_t end = 0;
    std::uint32_t size() const { return end - first; }
};

/// The folders that one thread of a walk came across: the subfolders of a folder lie one after the other, in
/// the order of the listing. Throws std::length_error when it is full.
class FolderFindings {
  public:
    /// Adds the subfolders of an open folder; `mostSubfolders` as for appendSubfolderNames().
    FolderRange addSubfoldersOf(int directory, std::size_t mostSubfolders);
    /// Adds folders by their names, each closed by a NUL.
    FolderRange addNames(std::string_view names);

    /// Closed by a NUL; valid until folders are added.
    std::string_view name(std::uint32_t folder) const { return names_.c_str() + folders_[folder].name; }
    /// The names of the folders, each closed by a NUL; valid until folders are added.
    std::string_view names(FolderRange folders) const;

    /// Nothing until they are set.
    FolderRange subfolders(std::uint32_t folder) const;
    void setSubfolders(std::uint32_t folder, FolderRange subfolders);
    /// The subfolders that follow these and that others have walked; null when there are none.
    const Subtrees* followingSubtrees(std::uint32_t folder) const;
    void setFollowingSubtrees(std::uint32_t folder, const Subtrees* following);

    /// A folder that was listed and gone when its turn came.
    bool isGone(std::uint32_t folder) const { return folders_[folder].subfolderCount == gone; }
    void setGone(std::uint32_t folder) { folders_[folder].subfolderCount = gone; }

    std::size_t size() const { return folders_.size(); }
    std::size_t nameBytes() const { return names_.size(); }

  private:
    static constexpr std::uint32_t gone = std::numeric_limits<std::uint32_t>::max();
    struct Folder {
        std::uint32_t name;
        std::uint32_t firstSubfolder;
        std::uint32_t subfolderCount;
    };
    FolderRange addFoldersNamedFrom(std::size_t firstName);

    std::vector<Folder> folders_;
    std::string names_;
    std::unordered_map<std::uint32_t, const Subtrees*> following_;
};

} // namespace brimwick
