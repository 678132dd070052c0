#pragma once

#include <sys/types.h>

#include <optional>

namespace brimwick {

/// By what a folder is known again: the place of a disk that is not plugged in has the same path.
struct FolderMark {
    /// The kind of its file system, as `statfs` has it; 0 for one that does not say.
    long fileSystem = 0;
    ino_t inode = 0;

    /// The mark of an open folder. Nothing when it cannot be read, and errno says why.
    static std::optional<FolderMark> of(int folder);
    /// Whether its file system is one of this machine's own, which is flushed as a whole, says so when that
    /// fails, and whose answer to a rename is never lost. No means that it is not known as one.
    bool isLocal() const;
    /// Whether the folder may be that one. Where a file system numbers its folders anew each time, the kind
    /// alone tells.
    bool fits(int folder) const;
};

} // namespace brimwick
