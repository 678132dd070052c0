#pragma once

#include "platform/ports/FileDescriptor.h"

#include <sys/stat.h>
#include <tl/expected.hpp>

#include <string>
#include <system_error>

namespace brimwick {

/// What to do at each entry of a tree. Any error ends the walk.
class TreeVisitor {
  public:
    virtual ~TreeVisitor() = default;
    /// Anything that is no folder.
    virtual std::error_code visitEntry(int parent, const std::string& name, const struct stat& status) = 0;
    /// Before the entries of a folder. The root has an empty name.
    virtual std::error_code enterFolder(int folder, const std::string& name, const struct stat& status) = 0;
    /// After them; `status` is that of entering.
    virtual std::error_code leaveFolder(int, const struct stat&) { return {}; }
    /// When the walk stands in the parent again; not called for the root.
    virtual std::error_code leftFolder(int, const std::string&) { return {}; }
};

struct TreeWalkError {
    std::error_code code;
    /// The entry at which the walk ended, relative to the root; empty for the root.
    std::string relativePath;
};

/// Visits a tree depth first, each folder's names in byte order. Symbolic links are entries, never followed.
tl::expected<void, TreeWalkError> walkTree(FileDescriptor root, TreeVisitor& visitor);

} // namespace brimwick
