#include "actions/CopyFolder.h"

#include "actions/CopyMetadata.h"
#include "actions/FolderCursor.h"
#include "actions/OpenFolder.h"
#include "actions/SystemError.h"

#include <fcntl.h>

#include <map>

namespace brimwick {

Flush flushFor(const FolderMark& folder) {
    return folder.isLocal() ? Flush::StartedOnly : Flush::AtOnce;
}

namespace {

class FolderCopier : public TreeVisitor {
  public:
    FolderCopier(FileDescriptor root, const struct stat& stagedStatus, Flush flush,
                 TransferProgress& progress)
        : root_(fcntl(root.get(), F_DUPFD_CLOEXEC, 0)), staged_(std::move(root)), stagedStatus_(stagedStatus),
          flush_(flush), progress_(progress) {}

    std::error_code visitEntry(int parent, const std::string& name, const struct stat& status) override {
        if (auto error = progress_.checkCancelled()) return error;
        const NameInFolder from{parent, name};
        const NameInFolder to{staged_.folder(), name};
        struct stat copied = status;
        if (S_ISLNK(status.st_mode)) {
            if (auto error = copySymbolicLink(from, to, status)) return error;
        } else if (!S_ISREG(status.st_mode)) {
            return std::make_error_code(std::errc::operation_not_supported);
        } else if (auto error = linkOrCopy(from, to, copied)) {
            return error;
        }
        log_.push_back({name, staged_.depth() + 1, EntryStamp(copied)});
        return {};
    }

    std::error_code enterFolder(int, const std::string& name, const struct stat& status) override {
        if (name.empty()) {
            log_.push_back({"", 0, EntryStamp(status)});
            return {};
        }
        // Bound there by another way; it would never end.
        if (status.st_dev == stagedStatus_.st_dev && status.st_ino == stagedStatus_.st_ino)
            return std::make_error_code(std::errc::invalid_argument);
        if (mkdirat(staged_.folder(), name.c_str(), 0700) != 0) return lastSystemError();
        if (auto error = staged_.enter(name)) return error;
        log_.push_back({name, staged_.depth(), EntryStamp(status)});
        return {};
    }

    std::error_code leaveFolder(int folder, const struct stat& status) override {
        // Only now: a read-only folder could not have been filled, and each new entry changes its time.
        struct stat copy {};
        if (fstat(staged_.folder(), &copy) != 0) return lastSystemError();
        if (auto error = copyMetadata(folder, staged_.folder(), status, copy)) return error;
        if (flush_ == Flush::AtOnce) {
            if (auto error = syncDescriptor(staged_.folder())) return error;
        }
        return staged_.depth() == 0 ? std::error_code() : staged_.leave();
    }

    CopyLog takeLog() { return std::move(log_); }

  private:
    std::error_code linkOrCopy(const NameInFolder& from, const NameInFolder& to, struct stat& status) {
        const auto file = std::pair(status.st_dev, status.st_ino);
        if (const auto known = copiedLinks_.find(file); known != copiedLinks_.end()) {
            const std::error_code error = linkToCopy(known->second, to);
            if (!error) progress_.addBytes(status.st_size);
            if (!error) return {};
            if (error != std::errc::operation_not_permitted && error != std::errc::too_many_links)
                return error;
            // It says so twice where there are no hard links, or not so many.
            const std::error_code again = linkToCopy(known->second, to);
            if (again != error) return again;
        }
        CopiedFile copied{};
        if (auto error = copyRegularFile(from, to, flush_, copied, progress_)) return error;
        status = copied.source;
        if (status.st_nlink > 1) copiedLinks_[file] = staged_.relativePathOf(to.name);
        return {};
    }

    std::error_code linkToCopy(const std::string& relativePath, const NameInFolder& to) {
        FileDescriptor holder;
        int folder = root_.get();
        std::size_t begin = 0;
        // One component at a time: the whole path may be longer than the kernel takes.
        for (std::size_t slash = 0; (slash = relativePath.find('/', begin)) != std::string::npos;
             begin = slash + 1) {
            const std::string name = relativePath.substr(begin, slash - begin);
            FileDescriptor next = openFolderIn(folder, name);
            if (!next) return lastSystemError();
            holder = std::move(next);
            folder = holder.get();
        }
        const std::string name = relativePath.substr(begin);
        return linkat(folder, name.c_str(), to.folder, to.name.c_str(), 0) == 0 ? std::error_code()
                                                                                : lastSystemError();
    }

    FileDescriptor root_;
    FolderCursor staged_;
    struct stat stagedStatus_; ///< of the root
    Flush flush_;
    TransferProgress& progress_;
    CopyLog log_;
    /// Files with several names, by device and inode: where the first one was copied to.
    std::map<std::pair<dev_t, ino_t>, std::string> copiedLinks_;
};

} // namespace

tl::expected<CopyLog, TreeWalkError> copyFolder(const NameInFolder& from, const NameInFolder& to, Flush flush,
                                                TransferProgress& progress) {
    const auto failed = [] { return tl::unexpected(TreeWalkError{lastSystemError(), ""}); };
    FileDescriptor source = openFolderIn(from.folder, from.name);
    if (!source) return failed();
    if (mkdirat(to.folder, to.name.c_str(), 0700) != 0) return failed();
    FileDescriptor staged = openFolderIn(to.folder, to.name);
    if (!staged) return failed();

    struct stat stagedStatus {};
    if (fstat(staged.get(), &stagedStatus) != 0) return failed();
    FolderCopier copier(std::move(staged), stagedStatus, flush, progress);
    if (auto walked = walkTree(std::move(source), copier); !walked) return tl::unexpected(walked.error());
    return copier.takeLog();
}

} // namespace brimwick
