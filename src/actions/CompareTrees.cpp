#include "actions/CompareTrees.h"

#include "actions/FolderCursor.h"
#include "actions/OpenFolder.h"
#include "actions/SystemError.h"

#include <fcntl.h>

#include <algorithm>
#include <vector>

namespace brimwick {

namespace {

constexpr std::size_t smallestBlock = std::size_t{1} << 12U;
constexpr std::size_t largestBlock = std::size_t{1} << 20U;

std::error_code different() {
    return std::make_error_code(std::errc::device_or_resource_busy);
}

FileDescriptor openFileIn(const NameInFolder& place) {
    return FileDescriptor(
        openat(place.folder, place.name.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
}

/// Reads until the block is full or the file ends; negative when it cannot.
ssize_t readBlock(int file, std::vector<char>& block, off_t offset) {
    std::size_t filled = 0;
    while (filled < block.size()) {
        const ssize_t got =
            pread(file, block.data() + filled, block.size() - filled, offset + static_cast<off_t>(filled));
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) return got;
        if (got == 0) break;
        filled += static_cast<std::size_t>(got);
    }
    return static_cast<ssize_t>(filled);
}

class Comparison : public TreeVisitor {
  public:
    Comparison(const ComparedTrees& trees, const std::stop_token& stop) : trees_(trees), stop_(stop) {}

    std::error_code run() {
        struct stat status {};
        if (fstatat(trees_.item.folder, trees_.item.name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0)
            return lastSystemError();
        if (!S_ISDIR(status.st_mode)) return compareEntry(trees_.item, trees_.other, status, 0, "");
        FileDescriptor item = openFolderIn(trees_.item.folder, trees_.item.name);
        if (!item) return lastSystemError();
        FileDescriptor other = openFolderIn(trees_.other.folder, trees_.other.name);
        if (!other) return lastSystemError();
        other_.emplace(std::move(other));
        auto walked = walkTree(std::move(item), *this);
        if (walked) return {};
        where_ = walked.error().relativePath;
        return walked.error().code;
    }

    std::error_code visitEntry(int parent, const std::string& name, const struct stat& status) override {
        return compareEntry({parent, name}, {other_->folder(), name}, status, other_->depth() + 1, name);
    }

    std::error_code enterFolder(int, const std::string& name, const struct stat& status) override {
        if (auto error = checkUnchanged(status)) return error;
        if (!name.empty()) {
            if (auto error = other_->enter(name)) return error;
        }
        struct stat otherStatus {};
        if (fstat(other_->folder(), &otherStatus) != 0) return lastSystemError();
        return note(name, other_->depth(), status, otherStatus);
    }

    std::error_code leaveFolder(int, const struct stat&) override {
        return other_->depth() == 0 ? std::error_code() : other_->leave();
    }

    const std::string& where() const { return where_; }
    SameEntries takeEntries() { return std::move(entries_); }

  private:
    std::error_code compareEntry(const NameInFolder& one, const NameInFolder& other,
                                 const struct stat& status, std::size_t depth, const std::string& name) {
        if (auto error = checkUnchanged(status)) return error;
        struct stat otherStatus {};
        if (fstatat(other.folder, other.name.c_str(), &otherStatus, AT_SYMLINK_NOFOLLOW) != 0)
            return lastSystemError();
        std::error_code error = different();
        if (S_ISREG(status.st_mode)) error = compareFiles(one, other);
        if (S_ISLNK(status.st_mode)) error = compareLinks(one, other);
        if (error) return error;
        return note(name, depth, status, otherStatus);
    }

    std::error_code note(const std::string& name, std::size_t depth, const struct stat& status,
                         const struct stat& otherStatus) {
        // One and the same entry by two ways is no copy of itself.
        if (status.st_dev == otherStatus.st_dev && status.st_ino == otherStatus.st_ino) return different();
        entries_.item.push_back({name, depth, EntryStamp(status)});
        entries_.other.push_back({name, depth, EntryStamp(otherStatus)});
        return {};
    }

    std::error_code checkUnchanged(const struct stat& status) const {
        const auto changed =
            std::chrono::seconds(status.st_ctim.tv_sec) + std::chrono::nanoseconds(status.st_ctim.tv_nsec);
        return trees_.unchangedSince && changed > *trees_.unchangedSince ? different() : std::error_code();
    }

    std::error_code compareFiles(const NameInFolder& one, const NameInFolder& other) {
        const FileDescriptor oneFile = openFileIn(one);
        if (!oneFile) return lastSystemError();
        const FileDescriptor otherFile = openFileIn(other);
        if (!otherFile) return lastSystemError();
        struct stat oneStatus {};
        struct stat otherStatus {};
        if (fstat(oneFile.get(), &oneStatus) != 0 || fstat(otherFile.get(), &otherStatus) != 0)
            return lastSystemError();
        const bool sizesFit = trees_.files == FileMatch::Same ? oneStatus.st_size == otherStatus.st_size
                                                              : oneStatus.st_size <= otherStatus.st_size;
        if (!S_ISREG(oneStatus.st_mode) || !S_ISREG(otherStatus.st_mode) || !sizesFit) return different();
        makeRoomFor(oneStatus.st_size);
        return compareContents(oneFile.get(), otherFile.get());
    }

    /// No more than the file needs: to clear a large block takes longer than to compare a small file.
    void makeRoomFor(off_t size) {
        const std::size_t wanted =
            std::clamp(static_cast<std::size_t>(size) + 1, smallestBlock, largestBlock);
        if (wanted <= block_.size()) return;
        block_.resize(wanted);
        otherBlock_.resize(wanted);
    }

    std::error_code compareContents(int one, int other) {
        for (off_t offset = 0;;) {
            if (stop_.stop_requested()) return std::make_error_code(std::errc::operation_canceled);
            const ssize_t length = readBlock(one, block_, offset);
            if (length < 0) return lastSystemError();
            if (length == 0) return {};
            const ssize_t otherLength = readBlock(other, otherBlock_, offset);
            if (otherLength < 0) return lastSystemError();
            if (otherLength < length ||
                !std::equal(block_.begin(), block_.begin() + length, otherBlock_.begin()))
                return different();
            offset += length;
        }
    }

    static std::error_code compareLinks(const NameInFolder& one, const NameInFolder& other) {
        const auto target = readLink(one);
        if (!target) return target.error();
        const auto otherTarget = readLink(other);
        if (!otherTarget) return otherTarget.error();
        return *target == *otherTarget ? std::error_code() : different();
    }

    const ComparedTrees& trees_;
    const std::stop_token& stop_;
    /// Stands where the walk stands, in the other tree.
    std::optional<FolderCursor> other_;
    SameEntries entries_;
    std::string where_;
    std::vector<char> block_;
    std::vector<char> otherBlock_;
};

} // namespace

tl::expected<SameEntries, TreeWalkError> compareTrees(const ComparedTrees& trees,
                                                      const std::stop_token& stop) {
    Comparison comparison(trees, stop);
    if (auto error = comparison.run()) return tl::unexpected(TreeWalkError{error, comparison.where()});
    return comparison.takeEntries();
}

std::error_code checkEntries(const NameInFolder& item, const CopyLog& log) {
    const auto check = [](int folder, const std::string& name, const EntryStamp& stamp) -> std::error_code {
        struct stat status {};
        if (fstatat(folder, name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0) return lastSystemError();
        return EntryStamp(status).isSame(stamp) ? std::error_code() : different();
    };
    if (auto error = check(item.folder, item.name, log.front().stamp)) return error;
    if (!log.front().stamp.isFolder()) return {};
    FileDescriptor root = openFolderIn(item.folder, item.name);
    if (!root) return lastSystemError();
    FolderCursor cursor(std::move(root));
    for (auto entry = log.begin() + 1; entry != log.end(); ++entry) {
        while (cursor.depth() >= entry->depth)
            if (auto error = cursor.leave()) return error;
        if (auto error = check(cursor.folder(), entry->name, entry->stamp)) return error;
        if (!entry->stamp.isFolder()) continue;
        if (auto error = cursor.enter(entry->name)) return error;
    }
    return {};
}

} // namespace brimwick
