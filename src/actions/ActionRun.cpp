#include "actions/ActionRun.h"

#include "actions/FreeSpace.h"
#include "actions/UniqueFileName.h"
#include "model/PathText.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <utility>

namespace brimwick {

namespace {

constexpr std::chrono::milliseconds longestUntold{250};

bool isReadable(const std::string& path) {
    return faccessat(AT_FDCWD, path.c_str(), R_OK, AT_EACCESS) == 0;
}

bool lieOnOneFileSystem(const std::string& folder, const std::string& otherFolder) {
    struct stat one {};
    struct stat other {};
    return stat(folder.c_str(), &one) == 0 && stat(otherFolder.c_str(), &other) == 0 &&
           one.st_dev == other.st_dev;
}

} // namespace

ActionRun::ActionRun(FileOperation operation, std::vector<File> files, std::string folder,
                     const std::string& realHomeDirectory, FileJournal& journal)
    : operation_(operation), files_(std::move(files)), folder_(std::move(folder)),
      destination_(operation == FileOperation::Trash ? joinPath(realHomeDirectory, ".Trash") : folder_),
      transfer_(realHomeDirectory, {journal, progress_, folders_}) {}

void ActionRun::perform() {
    using Clock = std::chrono::steady_clock;
    countBytes();
    Clock::time_point durable = Clock::now();
    for (const File& file : files_) {
        if (!isReadable(file.path)) continue;
        progress_.setItem(file.name);
        handled_.push_back({file.name, handle(file)});
        if (!handled_.back().path) break;
        // What is copied is durable then, and the next copy may take long.
        const bool waits = !isCopied(file) && !folders_.isFull() && Clock::now() - durable < longestUntold;
        if (waits) continue;
        if (!makeDurable()) return;
        durable = Clock::now();
    }
    makeDurable();
}

/// Nothing is told before it is: of many files at once, since the disk takes its time each time.
bool ActionRun::makeDurable() {
    const auto synced = folders_.syncChanged();
    // What failed was the last one, and it has its own reason.
    const bool failed = !handled_.empty() && !handled_.back().path;
    if (!synced && !failed && !handled_.empty()) handled_.back().path = tl::unexpected(synced.error());
    const std::lock_guard lock(mutex_);
    reports_.insert(reports_.end(), handled_.begin(), handled_.end());
    handled_.clear();
    return synced.has_value();
}

/// Whether the file goes to another file system than that of its folder, as far as can be told beforehand.
bool ActionRun::isCopied(const File& file) {
    if (operation_ == FileOperation::Copy) return true;
    if (std::string from = parentPath(file.path); from != lastFolder_) {
        lastIsCopied_ = !lieOnOneFileSystem(from, destination_);
        lastFolder_ = std::move(from);
    }
    return lastIsCopied_;
}

void ActionRun::countBytes() {
    std::int64_t bytes = 0;
    for (const File& file : files_) {
        if (progress_.checkCancelled()) return;
        if (isCopied(file)) bytes += sizeOfItem(file.path, progress_);
    }
    progress_.setTotalBytes(bytes);
}

tl::expected<std::string, FileError> ActionRun::handle(const File& file) const {
    const std::string plainPath = folder_ + "/" + file.name;
    const auto numberedPath = [&plainPath] { return uniquePath(plainPath); };
    if (operation_ == FileOperation::Move) return transfer_.move(file.path, plainPath, numberedPath);
    if (operation_ == FileOperation::Copy) return transfer_.copy(file.path, plainPath, numberedPath);
    // What is recorded is the place in the source folder, at which nothing lies.
    const std::string recorded = somethingLiesAt(plainPath) ? numberedPath() : plainPath;
    return transfer_.moveToTrash(file.path, file.name).map([&recorded](const std::string&) {
        return recorded;
    });
}

std::vector<ActionRun::Report> ActionRun::takeReports() {
    const std::lock_guard lock(mutex_);
    return std::exchange(reports_, {});
}

} // namespace brimwick
