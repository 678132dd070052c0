#include "actions/ActionRun.h"

#include "actions/FreeSpace.h"
#include "actions/UniqueFileName.h"
#include "model/PathText.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <iterator>
#include <system_error>
#include <utility>

namespace brimwick {

namespace {

constexpr std::chrono::milliseconds longestUntold{250};
/// So many copies, or such large ones, are made durable together.
constexpr std::size_t mostCopiedTogether = 1000;
constexpr int batchesWithoutRest = 8;
constexpr std::int64_t bytesCopiedTogether = std::int64_t{64} << 20U;

bool lieOnOneFileSystem(const std::string& folder, const std::string& otherFolder) {
    struct stat one {};
    struct stat other {};
    return stat(folder.c_str(), &one) == 0 && stat(otherFolder.c_str(), &other) == 0 &&
           one.st_dev == other.st_dev;
}

/// Without another thread the work is done when it is waited for.
template<typename Work>
std::future<void> startedIfPossible(std::launch policy, Work work) {
    try {
        return std::async(policy, work);
    } catch (const std::system_error&) {
        return std::async(std::launch::deferred, work);
    }
}

} // namespace

ActionRun::ActionRun(FileOperation operation, std::vector<File> files, std::string folder,
                     const std::string& realHomeDirectory, FileJournal& journal)
    : operation_(operation), files_(std::move(files)), folder_(std::move(folder)),
      realHomeDirectory_(realHomeDirectory), transfer_(realHomeDirectory, {journal, progress_, folders_}) {}

void ActionRun::perform() {
    // Here and not in the destructor, which may be called by a thread that must not wait.
    struct Abandoning {
        ~Abandoning() { run.abandonCopies(); }
        ActionRun& run;
    };
    const Abandoning whateverIsLeft{*this};
    performAll();
}

void ActionRun::performAll() {
    countBytes();
    handled_.reserve(files_.size());
    durable_ = Clock::now();
    for (std::size_t i = 0; i < files_.size(); ++i) {
        const File& file = files_[i];
        const bool isCopied = goesByCopy(file);
        // Before it is asked for: what is copied may be taken away.
        if (!isCopied || !canJoinCopies(file)) {
            if (!finishCopies()) return;
        } else if (enoughCopiesWait(i)) {
            // The journal is empty again only when nothing is under way.
            const bool restsAfterwards = ++batches_ % batchesWithoutRest == 0;
            if (!(restsAfterwards ? finishCopies() : startCopies(std::launch::async))) return;
        }
        if (!isReadable(file)) continue;
        if (isCopied) {
            waiting_.push_back(i);
            bytesOfWaiting_ += sizes_[i];
            pathsOfCopies_.insert(file.path);
            folderOfCopies_ = parentPath(file.path);
            continue;
        }
        progress_.setItem(file.name);
        if (!finish({file.name, handle(file)})) return;
    }
    if (finishCopies()) makeDurable();
}

/// Whether it can be copied together with those that are: one more of the same folder.
bool ActionRun::canJoinCopies(const File& file) const {
    return pathsOfCopies_.empty() ||
           (parentPath(file.path) == folderOfCopies_ && !pathsOfCopies_.contains(file.path));
}

bool ActionRun::enoughCopiesWait(std::size_t next) const {
    return !waiting_.empty() &&
           (waiting_.size() == mostCopiedTogether || bytesOfWaiting_ + sizes_[next] > bytesCopiedTogether);
}

bool ActionRun::isReadable(const File& file) {
    const auto place = folders_.openPlace(file.path);
    // Why a folder cannot be opened is told by whoever works in it.
    if (!place) return faccessat(AT_FDCWD, file.path.c_str(), R_OK, AT_EACCESS) == 0;
    return faccessat(place->folder.descriptor(), place->name.c_str(), R_OK, AT_EACCESS) == 0;
}

bool ActionRun::goesByCopy(const File& file) const {
    return operation_ == FileOperation::Copy ||
           (operation_ == FileOperation::Move && folders_.isAnyKnownToCross() &&
            folders_.isKnownToCross(parentPath(file.path), parentPath(destinationOf(file))));
}

/// Has those that wait copied, and finishes those before them meanwhile. False when these ended with a
/// failure.
bool ActionRun::startCopies(std::launch policy) {
    // What was done before them has waited long enough.
    if (!makeDurable()) return false;
    folders_.lookAnew();
    std::vector<FileTransfer::Item> items;
    for (const std::size_t i : waiting_) {
        items.push_back(itemOf(files_[i]));
        items.back().size = sizes_[i];
    }
    auto batch = transfer_.planCopies(std::move(items), operation_ == FileOperation::Move);
    auto before = std::exchange(underWay_, std::nullopt);
    if (before) before->copied.wait();
    if (batch) {
        CopyBatch& next = **batch;
        underWay_.emplace(CopiesUnderWay{std::exchange(waiting_, {}), std::move(*batch),
                                         startedIfPossible(policy, [&next] { next.copyAll(); })});
    }
    bytesOfWaiting_ = 0;
    if (before && !finish(std::move(*before))) return false;
    return batch || finish({files_[waiting_.front()].name, tl::unexpected(std::move(batch.error()))});
}

/// Finishes all copies. False when one failed.
bool ActionRun::finishCopies() {
    // Nothing would be gained by another thread for the only ones.
    const auto policy = underWay_ ? std::launch::async : std::launch::deferred;
    if (!waiting_.empty() && !startCopies(policy)) return false;
    auto last = std::exchange(underWay_, std::nullopt);
    pathsOfCopies_.clear();
    return !last || finish(std::move(*last));
}

bool ActionRun::finish(CopiesUnderWay copies) {
    copies.copied.get();
    auto paths = transfer_.finishCopies(*copies.batch);
    const bool failed = !paths.back();
    for (std::size_t i = 0; i < paths.size(); ++i)
        handled_.push_back({files_[copies.numbers[i]].name, std::move(paths[i])});
    return makeDurable() && !failed;
}

/// Those under way, after a failure. What is left behind of them, for its text.
std::string ActionRun::abandonCopies() {
    if (!underWay_) return "";
    progress_.cancel();
    underWay_->copied.wait();
    std::string left = underWay_->batch->abandon();
    underWay_.reset();
    return left;
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
    if (!handled_.empty()) {
        auto& last = handled_.back().path;
        // What failed was the last one, and it may have its own reason.
        if (!synced && last) last = tl::unexpected(synced.error());
        if (!last) last.error().description += abandonCopies();
    }
    const std::lock_guard lock(mutex_);
    if (reports_.empty())
        reports_ = std::exchange(handled_, {});
    else
        std::ranges::move(handled_, std::back_inserter(reports_));
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

std::string ActionRun::destinationOf(const File& file) const {
    return folder_ + "/" + file.name;
}

/// Refers to the file.
FileTransfer::Item ActionRun::itemOf(const File& file) const {
    return {file.path, destinationOf(file), [this, &file] { return uniquePath(destinationOf(file)); }, 0};
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
