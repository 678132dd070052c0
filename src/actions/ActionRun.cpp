#include "actions/ActionRun.h"

#include "actions/FreeSpace.h"
#include "actions/UniqueFileName.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <utility>

namespace brimwick {

namespace {

bool isReadable(const std::string& path) {
    return faccessat(AT_FDCWD, path.c_str(), R_OK, AT_EACCESS) == 0;
}

bool lieOnOneFileSystem(const std::string& path, const std::string& folder) {
    struct stat item {};
    struct stat target {};
    return lstat(path.c_str(), &item) == 0 && stat(folder.c_str(), &target) == 0 &&
           item.st_dev == target.st_dev;
}

} // namespace

ActionRun::ActionRun(FileOperation operation, std::vector<File> files, std::string folder,
                     const std::string& realHomeDirectory, FileJournal& journal)
    : operation_(operation), files_(std::move(files)), folder_(std::move(folder)),
      transfer_(realHomeDirectory, {journal, progress_}) {}

void ActionRun::perform() {
    countBytes();
    for (const File& file : files_) {
        if (!isReadable(file.path)) continue;
        progress_.setItem(file.name);
        auto path = handle(file);
        const bool failed = !path;
        report(file, std::move(path));
        if (failed) return;
    }
}

void ActionRun::countBytes() {
    std::int64_t bytes = 0;
    for (const File& file : files_)
        if (operation_ == FileOperation::Copy || !lieOnOneFileSystem(file.path, folder_))
            bytes += sizeOfItem(file.path);
    progress_.setTotalBytes(bytes);
}

tl::expected<std::string, FileError> ActionRun::handle(const File& file) const {
    const std::string plainPath = folder_ + "/" + file.name;
    const auto numberedPath = [&plainPath] { return uniquePath(plainPath); };
    const std::string destination = somethingLiesAt(plainPath) ? numberedPath() : plainPath;
    if (operation_ == FileOperation::Move) return transfer_.move(file.path, destination, numberedPath);
    if (operation_ == FileOperation::Copy) return transfer_.copy(file.path, destination, numberedPath);
    // What is recorded is the place in the source folder, at which nothing lies.
    return transfer_.moveToTrash(file.path, file.name).map([&destination](const std::string&) {
        return destination;
    });
}

void ActionRun::report(const File& file, tl::expected<std::string, FileError> path) {
    const std::lock_guard lock(mutex_);
    reports_.push_back({file.name, std::move(path)});
}

std::vector<ActionRun::Report> ActionRun::takeReports() {
    const std::lock_guard lock(mutex_);
    return std::exchange(reports_, {});
}

} // namespace brimwick
