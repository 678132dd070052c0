#include "actions/TrashFolder.h"

#include "actions/SystemError.h"
#include "model/FileUrl.h"
#include "model/PathText.h"
#include "platform/ports/FileDescriptor.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <array>
#include <cstdlib>
#include <ctime>

namespace brimwick {

namespace {

std::string dataHome(const std::string& home) {
    const char* configured = std::getenv("XDG_DATA_HOME");
    // A relative path there does not count.
    if (configured != nullptr && *configured == '/') return configured;
    return joinPath(home, ".local/share");
}

std::error_code makePrivateFolders(const std::string& path) {
    if (mkdir(path.c_str(), 0700) == 0 || errno == EEXIST) return {};
    if (errno != ENOENT || path == "/") return lastSystemError();
    if (auto error = makePrivateFolders(parentPath(path))) return error;
    return mkdir(path.c_str(), 0700) == 0 || errno == EEXIST ? std::error_code() : lastSystemError();
}

std::string localTimeNow() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    std::array<char, 32> text{};
    return {text.data(), std::strftime(text.data(), text.size(), "%Y-%m-%dT%H:%M:%S", &local)};
}

} // namespace

TrashFolder::TrashFolder(std::string realHomeDirectory)
    : path_(joinPath(realHomeDirectory, ".Trash")),
      desktopTrash_(joinPath(dataHome(realHomeDirectory), "Trash")) {}

tl::expected<void, FileError> TrashFolder::makeReady() const {
    struct stat status {};
    if (stat(path_.c_str(), &status) == 0) return {};
    const std::string files = joinPath(desktopTrash_, "files");
    if (auto error = makePrivateFolders(files))
        return tl::unexpected(fileError("Could not make the Trash folder", files, error));
    if (symlink(files.c_str(), path_.c_str()) != 0 && errno != EEXIST)
        return tl::unexpected(fileError("Could not make the Trash", path_, lastSystemError()));
    return {};
}

bool TrashFolder::isDesktopTrash(const std::string& folder) const {
    struct stat asked {};
    struct stat files {};
    return stat(folder.c_str(), &asked) == 0 && stat(joinPath(desktopTrash_, "files").c_str(), &files) == 0 &&
           asked.st_dev == files.st_dev && asked.st_ino == files.st_ino;
}

std::string TrashFolder::recordPath(const std::string& name) const {
    return joinPath(desktopTrash_, "info/" + name + ".trashinfo");
}

std::error_code TrashFolder::addRecord(const std::string& name, const std::string& originalPath) const {
    if (auto error = makePrivateFolders(joinPath(desktopTrash_, "info"))) return error;
    FileDescriptor record(
        open(recordPath(name).c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600));
    if (!record) return lastSystemError();
    const std::string text =
        "[Trash Info]\nPath=" + percentEncodedPath(originalPath) + "\nDeletionDate=" + localTimeNow() + "\n";
    errno = ENOSPC;
    const bool written = write(record.get(), text.data(), text.size()) == static_cast<ssize_t>(text.size());
    if (written && record.close()) return {};
    const std::error_code reason = lastSystemError();
    removeRecord(name);
    return reason;
}

void TrashFolder::removeRecord(const std::string& name) const {
    unlink(recordPath(name).c_str());
}

} // namespace brimwick
