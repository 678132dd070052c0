#include "actions/CopyMetadata.h"

#include "actions/ExtendedAttributes.h"
#include "actions/SystemError.h"
#include "platform/ports/FileDescriptor.h"

#include <fcntl.h>

#include <array>

namespace brimwick {

namespace {

using Times = std::array<timespec, 2>;

Times timesOf(const struct stat& source) {
    return {source.st_atim, source.st_mtim};
}

/// Whether owner and group became those of the source.
bool ownerCopied(int to, const struct stat& source, const struct stat& now, std::error_code& error) {
    const bool sameOwner = now.st_uid == source.st_uid;
    const bool sameGroup = now.st_gid == source.st_gid;
    if (sameOwner && sameGroup) return true;
    if (fchown(to, source.st_uid, source.st_gid) == 0) return true;
    if (errno != EPERM) error = lastSystemError();
    // The group alone may still be one of the user's own.
    else if (!sameGroup && fchown(to, static_cast<uid_t>(-1), source.st_gid) != 0 && errno != EPERM)
        error = lastSystemError();
    return false;
}

bool unsupported(int code) {
    return code == ENOSYS || code == EOPNOTSUPP;
}

/// Whether what was just refused is refused because a mounted disk gives all its files to another user.
bool belongsToAnother(int file) {
    const int reason = errno;
    struct stat status {};
    const bool another = reason == EPERM && fstat(file, &status) == 0 && status.st_uid != geteuid();
    errno = reason;
    return another;
}

} // namespace

std::error_code copyMetadata(int from, int to, const struct stat& source, const struct stat& copy) {
    if (auto error = copyExtendedAttributes(from, to)) return error;
    std::error_code ownerError;
    // The owner before the mode, for changing it clears the set-id bits; the times last.
    const bool ownerKept = ownerCopied(to, source, copy, ownerError);
    if (ownerError) return ownerError;
    const mode_t mode = source.st_mode & (ownerKept ? 07777U : 01777U);
    if (fchmod(to, mode) != 0 && !unsupported(errno) && !belongsToAnother(to)) return lastSystemError();
    if (futimens(to, timesOf(source).data()) != 0 && !unsupported(errno) && !belongsToAnother(to))
        return lastSystemError();
    return {};
}

std::error_code copyLinkMetadata(int folder, const std::string& name, const struct stat& source) {
    struct stat now {};
    if (fstatat(folder, name.c_str(), &now, AT_SYMLINK_NOFOLLOW) != 0) return lastSystemError();
    if ((now.st_uid != source.st_uid || now.st_gid != source.st_gid) &&
        fchownat(folder, name.c_str(), source.st_uid, source.st_gid, AT_SYMLINK_NOFOLLOW) != 0 &&
        errno != EPERM)
        return lastSystemError();
    if (utimensat(folder, name.c_str(), timesOf(source).data(), AT_SYMLINK_NOFOLLOW) != 0 &&
        !unsupported(errno))
        return lastSystemError();
    return {};
}

} // namespace brimwick
