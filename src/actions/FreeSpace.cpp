#include "actions/FreeSpace.h"

#include "actions/TreeWalk.h"

#include <fcntl.h>
#include <linux/magic.h>
#include <sys/statfs.h>

#include <algorithm>
#include <array>
#include <cstdio>

namespace brimwick {

namespace {

constexpr std::uint64_t blockSize = 512;

/// What of a file takes space at least: not its holes, and a file of several names once.
std::uint64_t leastSpaceOf(const struct stat& status) {
    if (!S_ISREG(status.st_mode) || status.st_nlink == 0) return 0;
    const auto stored = static_cast<std::uint64_t>(status.st_blocks) * blockSize;
    return std::min(stored, static_cast<std::uint64_t>(status.st_size)) / status.st_nlink;
}

std::uint64_t lengthOf(const struct stat& status) {
    return S_ISREG(status.st_mode) ? static_cast<std::uint64_t>(status.st_size) : 0;
}

using Measure = std::uint64_t (*)(const struct stat&);

class Adder : public TreeVisitor {
  public:
    Adder(Measure measure, const TransferProgress& progress) : measure_(measure), progress_(progress) {}

    std::error_code visitEntry(int, const std::string&, const struct stat& status) override {
        sum += measure_(status);
        return progress_.checkCancelled();
    }
    std::error_code enterFolder(int, const std::string&, const struct stat&) override { return {}; }

    std::uint64_t sum = 0;

  private:
    Measure measure_;
    const TransferProgress& progress_;
};

/// Over all files of an item.
std::uint64_t sumOf(Measure measure, int folder, const std::string& name, const TransferProgress& progress) {
    struct stat status {};
    if (fstatat(folder, name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0) return 0;
    if (!S_ISDIR(status.st_mode)) return measure(status);
    Adder adder(measure, progress);
    FileDescriptor root = openFolderIn(folder, name);
    // What cannot be walked cannot be copied either, and the copy says why.
    if (root) static_cast<void>(walkTree(std::move(root), adder));
    return adder.sum;
}

/// Others share blocks, compress, or know no limit of their own.
bool takesWhatFilesHold(long fileSystem) {
    return fileSystem == EXT4_SUPER_MAGIC || fileSystem == TMPFS_MAGIC || fileSystem == MSDOS_SUPER_MAGIC ||
           fileSystem == EXFAT_SUPER_MAGIC;
}

} // namespace

tl::expected<void, FileError> checkFreeSpace(const ItemPlace& source, const OpenFolder& target,
                                             std::int64_t knownSize, const TransferProgress& progress) {
    struct statfs information {};
    if (fstatfs(target.descriptor(), &information) != 0 || !takesWhatFilesHold(information.f_type) ||
        information.f_blocks == 0)
        return {};
    const auto blocks = geteuid() == 0 ? information.f_bfree : information.f_bavail;
    const std::uint64_t free = std::uint64_t{blocks} * static_cast<std::uint64_t>(information.f_bsize);
    if (knownSize > 0 && static_cast<std::uint64_t>(knownSize) <= free) return {};
    const std::uint64_t needed = sumOf(leastSpaceOf, source.folder.descriptor(), source.name, progress);
    if (needed <= free) return {};
    FileError error = fileError("Could not copy", source.path(), target.path(),
                                std::make_error_code(std::errc::no_space_on_device));
    error.description += " (it takes " + sizeText(needed) + ", and " + sizeText(free) + " are free)";
    return tl::unexpected(std::move(error));
}

std::int64_t sizeOfItem(const std::string& path, const TransferProgress& progress) {
    return static_cast<std::int64_t>(sumOf(lengthOf, AT_FDCWD, path, progress));
}

std::string sizeText(std::uint64_t bytes) {
    static constexpr std::array units = {"kB", "MB", "GB", "TB", "PB", "EB"};
    if (bytes < 1000) return std::to_string(bytes) + " bytes";
    double size = static_cast<double>(bytes) / 1000;
    std::size_t unit = 0;
    // Nothing is shown as 1000 of a unit.
    for (; size >= 999.5 && unit + 1 < units.size(); ++unit) size /= 1000;
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), size < 9.95 ? "%.1f %s" : "%.0f %s", size, units.at(unit));
    return text.data();
}

} // namespace brimwick
