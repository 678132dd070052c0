#pragma once

#include <sys/types.h>

#include <map>

namespace brimwick {

/// Knows which file systems take their times from this machine's clock, and not from another's. One thread.
class FileSystemClocks {
  public:
    /// `path` is any file of the file system.
    bool areOurs(dev_t fileSystem, const char* path);

  private:
    std::map<dev_t, bool> known_;
};

} // namespace brimwick
