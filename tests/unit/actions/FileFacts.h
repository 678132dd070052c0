#pragma once

#include "fakes/TemporaryFolder.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <string>
#include <system_error>
#include <thread>
#include <vector>

namespace brimwick {

using Names = std::vector<std::string>;

inline void require(bool done, const std::string& what) {
    if (!done) throw std::system_error(errno, std::generic_category(), what);
}

/// Everything in a folder, hidden names included, sorted.
inline Names namesIn(const std::string& folder) {
    Names names;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        names.push_back(entry.path().filename());
    std::ranges::sort(names);
    return names;
}

inline struct stat statusOf(const std::string& path) {
    struct stat status {};
    require(lstat(path.c_str(), &status) == 0, path);
    return status;
}

/// The clock of some file systems stands still for so long.
inline void waitForAnotherTime() {
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
}

inline void setTimes(const std::string& path, timespec accessed, timespec modified) {
    const timespec times[] = {accessed, modified};
    require(utimensat(AT_FDCWD, path.c_str(), times, AT_SYMLINK_NOFOLLOW) == 0, path);
}

inline void setMode(const std::string& path, mode_t mode) {
    require(chmod(path.c_str(), mode) == 0, path);
}

inline void setAttribute(const std::string& path, const std::string& name, const std::string& value) {
    require(lsetxattr(path.c_str(), name.c_str(), value.data(), value.size(), 0) == 0, path + " " + name);
}

/// Empty when the attribute is absent.
inline std::string attributeOf(const std::string& path, const std::string& name) {
    char value[256];
    const ssize_t size = lgetxattr(path.c_str(), name.c_str(), value, sizeof value);
    return size < 0 ? std::string() : std::string(value, static_cast<std::size_t>(size));
}

/// A folder on another file system than the temporary folder's. Throws where the machine has none.
inline std::string otherFileSystem() {
    const dev_t here = statusOf(std::filesystem::temp_directory_path()).st_dev;
    for (const std::string candidate : {"/dev/shm", "/var/tmp", "/tmp", "/run"}) {
        struct stat status {};
        if (stat(candidate.c_str(), &status) == 0 && status.st_dev != here &&
            access(candidate.c_str(), W_OK) == 0)
            return candidate;
    }
    throw std::runtime_error("no second file system to test with");
}

} // namespace brimwick
