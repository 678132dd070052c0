#include "actions/RemoveVerified.h"

#include "actions/RemoveTree.h"
#include "actions/RenameWithoutReplacing.h"
#include "actions/SystemError.h"
#include "actions/TreeWalk.h"

#include <fcntl.h>

#include <csignal>

namespace brimwick {

namespace {

std::error_code changed() {
    return std::make_error_code(std::errc::device_or_resource_busy);
}

/// A lease on reading is refused exactly while somebody has the file open for writing.
std::error_code checkNobodyWrites(int folder, const std::string& name) {
    const FileDescriptor file(openat(folder, name.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    if (!file) return lastSystemError();
    // The usual signal of a broken lease would end the program; this one is ignored.
    if (fcntl(file.get(), F_SETSIG, SIGURG) == 0 && fcntl(file.get(), F_SETLEASE, F_RDLCK) != 0 &&
        errno == EAGAIN)
        return changed();
    return {};
}

/// Compares a tree with the log of its copy, entry by entry, in the order in which both were made.
class Verifier : public TreeVisitor {
  public:
    explicit Verifier(const CopyLog& log) : log_(log) {}

    std::error_code visitEntry(int parent, const std::string& name, const struct stat& status) override {
        if (auto error = expect(name, depth_, status)) return error;
        return S_ISREG(status.st_mode) ? checkNobodyWrites(parent, name) : std::error_code();
    }
    std::error_code enterFolder(int, const std::string& name, const struct stat& status) override {
        return expect(name, depth_++, status);
    }
    std::error_code leaveFolder(int, const struct stat&) override {
        --depth_;
        return {};
    }
    std::error_code expectEnd() const { return next_ == log_.size() ? std::error_code() : changed(); }

  private:
    std::error_code expect(const std::string& name, std::size_t depth, const struct stat& status) {
        if (next_ == log_.size()) return changed();
        const CopiedEntry& entry = log_[next_++];
        const EntryStamp now(status);
        // The item itself has just been renamed.
        const bool same = depth == 0 ? now.isSame(entry.stamp) : now.isUnchanged(entry.stamp);
        return same && entry.name == name && entry.depth == depth ? std::error_code() : changed();
    }

    const CopyLog& log_;
    std::size_t next_ = 0;
    std::size_t depth_ = 0;
};

std::error_code verify(int folder, const std::string& name, const CopyLog& log) {
    struct stat status {};
    if (fstatat(folder, name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0) return lastSystemError();
    if (!EntryStamp(status).isSame(log.front().stamp)) return changed();
    if (S_ISREG(status.st_mode)) return checkNobodyWrites(folder, name);
    if (!S_ISDIR(status.st_mode)) return {};
    FileDescriptor root = openFolderIn(folder, name);
    if (!root) return lastSystemError();
    Verifier verifier(log);
    if (auto walked = walkTree(std::move(root), verifier); !walked) return walked.error().code;
    return verifier.expectEnd();
}

} // namespace

std::error_code checkRemovable(const OpenFolder& folder, const struct stat& item) {
    if (faccessat(folder.descriptor(), ".", W_OK | X_OK, AT_EACCESS) != 0) return lastSystemError();
    struct stat around {};
    if (fstat(folder.descriptor(), &around) != 0) return lastSystemError();
    const uid_t user = geteuid();
    const bool othersMay = (around.st_mode & S_ISVTX) == 0 || user == 0;
    if (!othersMay && around.st_uid != user && item.st_uid != user)
        return std::make_error_code(std::errc::operation_not_permitted);
    return {};
}

tl::expected<void, RemovalError> removeClaimed(const ItemPlace& source, const std::string& claimed,
                                               const CopyLog& log, JournalEntry& notes,
                                               const std::function<std::error_code()>& lastCheck) {
    const int folder = source.folder.descriptor();
    std::error_code error = verify(folder, claimed, log);
    if (!error && lastCheck) error = lastCheck();
    if (error) return tl::unexpected(RemovalError{error, false});
    if (log.front().stamp.isFolder()) {
        notes.removing();
        notes.write();
    }
    if (auto left = removeLogged(folder, claimed, log)) return tl::unexpected(RemovalError{left, true});
    return {};
}

tl::expected<void, FileError> claimAndRemove(const ItemPlace& source, const std::string& claimed,
                                             const CopyLog& log, JournalEntry& notes) {
    const int folder = source.folder.descriptor();
    constexpr const char* kept = "Copied, but kept because it changed or could not be checked,";
    struct stat status {};
    if (fstatat(folder, source.name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0)
        return tl::unexpected(fileError("Copied, but could not remove", source.path(), lastSystemError()));
    if (!EntryStamp(status).isUnchanged(log.front().stamp))
        return tl::unexpected(fileError(kept, source.path(), changed()));
    // First under a name that nobody else opens: between looking and removing, no program can write into it.
    if (auto error = renameWithoutReplacing(status, folder, source.name, folder, claimed))
        return tl::unexpected(fileError("Copied, but could not remove", source.path(), error));
    const auto removed = removeClaimed(source, claimed, log, notes);
    if (removed) return {};
    const char* what = removed.error().isPartlyRemoved ? "Copied, but could not remove all of" : kept;
    FileError description = fileError(what, source.path(), removed.error().code);
    if (renameWithoutReplacing(folder, claimed, folder, source.name)) {
        description.description += " (it is now at \"" + source.folder.pathOf(claimed) + "\")";
        notes.keepOpen();
    }
    return tl::unexpected(std::move(description));
}

} // namespace brimwick
