#include "actions/RenameWithoutReplacing.h"

#include "actions/SystemError.h"
#include "platform/ports/FileDescriptor.h"

#include <fcntl.h>
#include <stdio.h>
#include <sys/stat.h>

namespace brimwick {

namespace {

bool sameItem(const struct stat& one, const struct stat& other) {
    return one.st_dev == other.st_dev && one.st_ino == other.st_ino;
}

std::error_code renameFolderOntoEmptyOne(int fromFolder, const char* from, int toFolder, const char* to) {
    if (mkdirat(toFolder, to, 0700) != 0) return lastSystemError();
    if (renameat(fromFolder, from, toFolder, to) == 0) return {};
    const std::error_code reason = lastSystemError();
    unlinkat(toFolder, to, AT_REMOVEDIR);
    return reason;
}

bool liesAt(const struct stat& item, int folder, const char* name) {
    struct stat now {};
    return fstatat(folder, name, &now, AT_SYMLINK_NOFOLLOW) == 0 && sameItem(item, now);
}

bool isGone(int folder, const char* name) {
    struct stat now {};
    return fstatat(folder, name, &now, AT_SYMLINK_NOFOLLOW) != 0 && errno == ENOENT;
}

std::error_code linkThenUnlink(const struct stat& item, int fromFolder, const char* from, int toFolder,
                               const char* to) {
    if (linkat(fromFolder, from, toFolder, to, 0) != 0) return lastSystemError();
    if (unlinkat(fromFolder, from, 0) == 0) return {};
    const std::error_code reason = lastSystemError();
    if (isGone(fromFolder, from)) return {};
    // The second name goes only while the first one is certainly there.
    if (liesAt(item, fromFolder, from) && liesAt(item, toFolder, to)) unlinkat(toFolder, to, 0);
    return reason;
}

} // namespace

std::error_code renameWithoutReplacing(int fromFolder, const std::string& fromName, int toFolder,
                                       const std::string& toName) {
    struct stat item {};
    if (fstatat(fromFolder, fromName.c_str(), &item, AT_SYMLINK_NOFOLLOW) != 0) return lastSystemError();
    return renameWithoutReplacing(item, fromFolder, fromName, toFolder, toName);
}

std::error_code tryRename(int fromFolder, const std::string& fromName, int toFolder,
                          const std::string& toName) {
    const int answer = renameat2(fromFolder, fromName.c_str(), toFolder, toName.c_str(), RENAME_NOREPLACE);
    return answer == 0 ? std::error_code() : lastSystemError();
}

std::error_code renameWithoutReplacing(const struct stat& item, int fromFolder, const std::string& fromName,
                                       int toFolder, const std::string& toName) {
    const char* from = fromName.c_str();
    const char* to = toName.c_str();
    const std::error_code reason = tryRename(fromFolder, fromName, toFolder, toName);
    if (!reason || reason == std::errc::file_exists || reason == std::errc::cross_device_link) return reason;
    if (reason == std::errc::invalid_argument || reason == std::errc::function_not_supported) {
        if (S_ISDIR(item.st_mode)) return renameFolderOntoEmptyOne(fromFolder, from, toFolder, to);
        const std::error_code linked = linkThenUnlink(item, fromFolder, from, toFolder, to);
        // Without hard links it was no answer to the question: a name that is not allowed there, say.
        const bool noLinks =
            linked == std::errc::operation_not_permitted || linked == std::errc::operation_not_supported;
        return noLinks ? reason : linked;
    }

    // Network storage may have done it although the answer got lost.
    if (liesAt(item, toFolder, to) && isGone(fromFolder, from)) return {};
    return reason;
}

} // namespace brimwick
