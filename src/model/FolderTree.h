#pragma once

#include "platform/ports/FolderList.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace brimwick {

/// Folders with their names and places, in the order in which they were added. The list that a walk fills;
/// one thread at a time. A name or path lies in it once, so that millions of folders fit.
class FolderTree {
  public:
    /// A folder with a path of its own. The display name is empty for one that was not found on disk. Throws
    /// std::length_error when the tree is full.
    FolderNumber addRoot(std::string path, std::string_view displayName);
    /// A folder inside one that was added before. Throws std::length_error when the tree is full.
    FolderNumber addSubfolder(FolderNumber parent, std::string_view name);

    std::size_t size() const { return parents_.size(); }
    std::size_t nameBytes() const { return names_.size(); }
    /// Makes room for so many folders, and bytes of names, in all.
    void reserve(std::size_t folders, std::size_t nameBytes);
    /// Valid until the tree changes.
    std::string_view displayName(FolderNumber folder) const;
    /// Nothing for a root.
    std::optional<FolderNumber> parent(FolderNumber folder) const;
    std::string path(FolderNumber folder) const;
    /// Gives back the memory that was kept for further folders.
    void shrink();

  private:
    struct Root {
        FolderNumber folder;
        std::string path;
    };
    FolderNumber add(FolderNumber parent, std::string_view displayName);

    std::string names_;
    std::vector<std::uint32_t> nameEnds_;
    std::vector<FolderNumber> parents_;
    std::vector<Root> roots_;
};

} // namespace brimwick
