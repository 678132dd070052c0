#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace brimwick {

/// The number of a folder in the order of the walk that found it.
using FolderNumber = std::uint32_t;

/// What a walk found: folders numbered from 0, depth first, each before its subfolders. Never changes; any
/// thread.
class FolderList {
  public:
    virtual ~FolderList() = default;

    virtual std::size_t size() const = 0;
    /// Nothing for a root.
    virtual std::optional<FolderNumber> parent(FolderNumber folder) const = 0;
    /// The file name of a subfolder, bytes; valid as long as the list. For a root some name, and none when it
    /// was not found.
    virtual std::string_view fileName(FolderNumber folder) const = 0;
    /// Absolute, bytes.
    virtual std::string path(FolderNumber folder) const = 0;
};

} // namespace brimwick
