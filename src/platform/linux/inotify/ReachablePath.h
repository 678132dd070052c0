#pragma once

#include "platform/ports/FileDescriptor.h"

#include <string>

namespace brimwick {

/// Makes paths of any length usable for system calls, which take less than PATH_MAX bytes. Keeps one folder
/// open between the calls; one thread.
class ReachablePath {
  public:
    /// The path itself, or another way to the same file; valid until the next call. Null, with errno set,
    /// when the file cannot be reached.
    const char* of(const std::string& path);

  private:
    bool openAnchorOf(const std::string& path, std::size_t end);

    FileDescriptor anchor_;
    /// What is open, without a slash at its end.
    std::string anchorPath_;
    std::string way_;
};

} // namespace brimwick
