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
/// So many copies, or such large ones, are made durable together.
constexpr std::size_t mostCopiedTogether = 1000;
constexpr std::int64_t bytesCopiedTogether = std::int64_t{64} << 20U;

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
      realHomeDirectory_(realHomeDirectory), transfer_(realHomeDirectory, {journal, progress_, folders_}) {}

void ActionRun::perform() {
    countBytes();
    durable_ = Clock::now();
    for (std::size_t i = 0; i < files_.size(); ++i) {
        const File& file = files_[i];
        const bool goesWithThose = goesByCopy(file) && fitsToCopies(i);
        // Before it is asked for: what waits may take it away.
        if (!goesWithThose && !handleCopies()) return;
        if (!isReadable(file.path)) continue;
        if (goesByCopy(file)) {
            copies_.push_back(i);
            pathsOfCopies_.insert(file.path);
            bytesOfCopies_ += sizes_[i];
            continue;
        }
        progress_.setItem(file.name);
        if (!finish({file.name, handle(file)})) return;
    }
    if (handleCopies()) makeDurable();
}

/// Whether a file can be copied together with those that wait: one more of the same folder, and not too much.
bool ActionRun::fitsToCopies(std::size_t number) const {
    if (copies_.empty()) return true;
    return copies_.size() < mostCopiedTogether && bytesOfCopies_ + sizes_[number] <= bytesCopiedTogether &&
           parentPath(files_[copies_.back()].path) == parentPath(files_[number].path) &&
           !pathsOfCopies_.contains(files_[number].path);
}

bool ActionRun::goesByCopy(const File& file) const {
    return operation_ == FileOperation::Copy ||
           (operation_ == FileOperation::Move && transfer_.isKnownToCross(itemOf(file)));
}

/// Handles what goes by copy, together. False when it ended with a failure.
bool ActionRun::handleCopies() {
    if (copies_.empty()) return true;
    // What was done before them has waited long enough.
    if (!makeDurable()) return false;
    std::vector<FileTransfer::Item> items;
    for (const std::size_t i : copies_) {
        items.push_back(itemOf(files_[i]));
        items.back().size = sizes_[i];
    }
    const auto paths = transfer_.byCopy(items, operation_ == FileOperation::Move);
    for (std::size_t i = 0; i < paths.size(); ++i) handled_.push_back({files_[copies_[i]].name, paths[i]});
    copies_.clear();
    pathsOfCopies_.clear();
    bytesOfCopies_ = 0;
    return makeDurable() && paths.back().has_value();
}

/// Notes what was handled, and tells it if it is time. False when it failed.
bool ActionRun::finish(Report report) {
    const bool failed = !report.path;
    handled_.push_back(std::move(report));
    if (!failed && !folders_.isFull() && Clock::now() - durable_ < longestUntold) return true;
    return makeDurable() && !failed;
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
    durable_ = Clock::now();
    return synced.has_value();
}

void ActionRun::countBytes() {
    sizes_.resize(files_.size());
    const std::string destination =
        operation_ == FileOperation::Trash ? joinPath(realHomeDirectory_, ".Trash") : folder_;
    std::string lastFolder;
    bool isCopied = operation_ == FileOperation::Copy;
    std::int64_t bytes = 0;
    for (std::size_t i = 0; i < files_.size() && !progress_.checkCancelled(); ++i) {
        if (std::string from = parentPath(files_[i].path);
            operation_ != FileOperation::Copy && from != lastFolder) {
            isCopied = !lieOnOneFileSystem(from, destination);
            lastFolder = std::move(from);
        }
        if (isCopied) sizes_[i] = sizeOfItem(files_[i].path, progress_);
        bytes += sizes_[i];
    }
    progress_.setTotalBytes(bytes);
}

FileTransfer::Item ActionRun::itemOf(const File& file) const {
    const std::string path = folder_ + "/" + file.name;
    return {file.path, path, [path] { return uniquePath(path); }, 0};
}

tl::expected<std::string, FileError> ActionRun::handle(const File& file) const {
    if (operation_ == FileOperation::Move) return transfer_.move(itemOf(file));
    // What is recorded is the place in the source folder, at which nothing lies.
    const FileTransfer::Item back = itemOf(file);
    const std::string recorded = somethingLiesAt(back.destination) ? back.nextPath() : back.destination;
    return transfer_.moveToTrash(file.path, file.name).map([&recorded](const std::string&) {
        return recorded;
    });
}

std::vector<ActionRun::Report> ActionRun::takeReports() {
    const std::lock_guard lock(mutex_);
    return std::exchange(reports_, {});
}

} // namespace brimwick
