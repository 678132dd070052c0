#pragma once

#include "platform/ports/FileDescriptor.h"

#include <sys/types.h>

#include <string>
#include <system_error>
#include <vector>

namespace brimwick {

/// A position in a tree of folders, moved one level at a time. Never follows a symbolic link, never needs a
/// long path, and holds only the innermost few folders open, however deep it goes.
class FolderCursor {
  public:
    explicit FolderCursor(FileDescriptor root);

    int folder() const { return levels_.back().descriptor.get(); }
    /// 0 at the root.
    std::size_t depth() const { return levels_.size() - 1; }
    /// The name by which the current folder was entered; empty at the root.
    const std::string& name() const { return levels_.back().name; }
    /// Relative to the root, "a/b"; empty at the root.
    std::string relativePath() const;
    /// The same for an entry of the current folder.
    std::string relativePathOf(const std::string& name) const;

    [[nodiscard]] std::error_code enter(const std::string& name);
    /// Fails when the folder was moved elsewhere meanwhile.
    [[nodiscard]] std::error_code leave();

  private:
    struct Level {
        std::string name;
        FileDescriptor descriptor;
        dev_t device = 0;
        ino_t inode = 0;
    };
    std::vector<Level> levels_;
};

} // namespace brimwick
