#pragma once

#include "actions/FileError.h"

#include <tl/expected.hpp>

#include <string>

namespace brimwick {

/// The user's Trash, "home/.Trash", and the desktop's own, which it usually leads to.
class TrashFolder {
  public:
    explicit TrashFolder(std::string realHomeDirectory);

    /// "home/.Trash".
    const std::string& path() const { return path_; }
    /// Where "home/.Trash" is absent, makes it a symbolic link to the desktop's Trash, and that folder too.
    tl::expected<void, FileError> makeReady() const;

    /// Whether that folder is the top level of the desktop's Trash, by whatever path.
    bool isDesktopTrash(const std::string& folder) const;
    /// Writes down where an item came from that will lie in the desktop's Trash under this name.
    /// `file_exists` when another item of this name is on record.
    [[nodiscard]] std::error_code addRecord(const std::string& name, const std::string& originalPath) const;
    void removeRecord(const std::string& name) const;

  private:
    std::string recordPath(const std::string& name) const;

    std::string path_;
    std::string desktopTrash_; ///< the folder with "files" and "info"
};

} // namespace brimwick
