#include "actions/StagedCopy.h"

#include "actions/CopyFolder.h"
#include "actions/RemoveTree.h"
#include "actions/RenameWithoutReplacing.h"
#include "actions/SystemError.h"

#include <fcntl.h>

namespace brimwick {

namespace {

struct CopyFailure {
    std::error_code code;
    std::string relativePath;
};

/// `copy` receives the status of the copy, unless it must be asked for.
tl::expected<CopyLog, CopyFailure> copyUnderName(const ItemPlace& source, struct stat status,
                                                 struct stat& copy, const NameInFolder& staged, Flush flush,
                                                 TransferProgress& progress) {
    const NameInFolder from{source.folder.descriptor(), source.name};
    if (S_ISDIR(status.st_mode)) {
        auto log = copyFolder(from, staged, flush, progress);
        if (!log) return tl::unexpected(CopyFailure{log.error().code, log.error().relativePath});
        return std::move(*log);
    }
    std::error_code error = std::make_error_code(std::errc::operation_not_supported);
    if (S_ISREG(status.st_mode)) {
        CopiedFile copied{};
        error = copyRegularFile(from, staged, flush, copied, progress);
        status = copied.source;
        copy = copied.copy;
    }
    if (S_ISLNK(status.st_mode)) error = copySymbolicLink(from, staged, status);
    if (error) return tl::unexpected(CopyFailure{error, ""});
    return CopyLog{{"", 0, EntryStamp(status)}};
}

} // namespace

tl::expected<StagedCopy, FileError> StagedCopy::make(const ItemPlace& source, const struct stat& status,
                                                     const OpenFolder& target, std::string name, Flush flush,
                                                     JournalEntry& notes, TransferProgress& progress) {
    StagedCopy staged(target, std::move(name), notes);
    auto log =
        copyUnderName(source, status, staged.status_, {target.descriptor(), staged.name_}, flush, progress);
    // The last moment at which nothing has happened yet.
    if (auto cancelled = progress.checkCancelled(); log && cancelled)
        log = tl::unexpected(CopyFailure{cancelled, ""});
    if (log) {
        staged.log_ = std::move(*log);
        return staged;
    }
    const std::string& inside = log.error().relativePath;
    const std::error_code code = log.error().code;
    const std::string from = inside.empty() ? source.path() : source.path() + "/" + inside;
    FileError error = fileError(code == std::errc::operation_not_supported ? "Could not copy the special file"
                                                                           : "Could not copy",
                                from, target.path(), code);
    if (code == std::errc::device_or_resource_busy || code == std::errc::no_message_available)
        error.description = "Could not copy \"" + from + "\": it changed while it was copied";
    return tl::unexpected(std::move(error));
}

StagedCopy::StagedCopy(StagedCopy&& other) noexcept
    : target_(other.target_), name_(std::exchange(other.name_, {})), notes_(other.notes_),
      log_(std::move(other.log_)), status_(other.status_), announced_(std::move(other.announced_)) {}

StagedCopy::~StagedCopy() {
    static_cast<void>(discard());
}

std::error_code StagedCopy::announce(const std::string& name) {
    if (status_.st_ino == 0 &&
        fstatat(target_.descriptor(), name_.c_str(), &status_, AT_SYMLINK_NOFOLLOW) != 0)
        return lastSystemError();
    announced_ = name;
    notes_.naming(target_, status_.st_ino, name);
    return {};
}

std::error_code StagedCopy::rename(const std::string& name) {
    const int folder = target_.descriptor();
    if (name != announced_) {
        if (auto error = announce(name)) return error;
        notes_.write();
    }
    if (auto error = renameWithoutReplacing(status_, folder, name_, folder, name)) return error;
    name_.clear();
    return {};
}

std::error_code StagedCopy::discard() {
    if (name_.empty()) return {};
    const std::string name = std::exchange(name_, {});
    // A disk that had a bad moment may have recovered.
    if (!removeTree(target_.descriptor(), name)) return {};
    const std::error_code error = removeTree(target_.descriptor(), name);
    if (error) notes_.keepOpen();
    return error;
}

} // namespace brimwick
