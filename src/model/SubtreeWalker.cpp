#include "model/SubtreeWalker.h"

#include "model/FolderListing.h"

#include <fcntl.h>
#include <sys/stat.h>

namespace brimwick {
namespace {

constexpr std::size_t mostOpenLevels = 32;
constexpr std::size_t anyNumber = std::numeric_limits<std::size_t>::max();

/// The name is closed by a NUL.
FileDescriptor openSubfolder(const FileDescriptor& parent, std::string_view name) {
    return openForListing(parent.get(), name.data(), O_NOFOLLOW);
}

/// Nothing where not even that can be asked: gone, or in a folder that may be listed but not entered.
std::optional<struct stat> statusOf(const FileDescriptor& parent, std::string_view name) {
    struct stat status {};
    if (fstatat(parent.get(), name.data(), &status, AT_SYMLINK_NOFOLLOW) != 0) return std::nullopt;
    return status;
}

} // namespace

SubtreeWalker::SubtreeWalker(FolderFindings& findings, SubtreeExchange& exchange,
                             const FolderNameObserver& observer, std::stop_token stop)
    : findings_(findings), exchange_(exchange), observer_(observer), stop_(std::move(stop)) {}

bool SubtreeWalker::walk(Subtrees& subtrees) {
    start(subtrees);
    while (!stop_.stop_requested()) {
        if (exchange_.isWanting()) share();
        if (levels_.back().toWalk.size() > 0) {
            descendIntoNextSubfolder();
        } else if (levels_.size() > 1) {
            leave();
        } else {
            subtrees.folders = {subtrees.folders.first, levels_.front().toWalk.end};
            subtrees.following = levels_.front().following;
            return true;
        }
    }
    return false;
}

void SubtreeWalker::start(Subtrees& subtrees) {
    subtrees.findings = &findings_;
    subtrees.folders = findings_.addNames(subtrees.names);
    Level base;
    base.toWalk = subtrees.folders;
    base.following = subtrees.following;
    struct stat status {};
    if (fstat(subtrees.parent.get(), &status) == 0)
        base.keepsLinkCounts = linkCounts_.areKeptOn(subtrees.parent.get(), status.st_dev);
    base.directory = std::move(subtrees.parent);
    levels_.clear();
    levels_.push_back(std::move(base));
}

void SubtreeWalker::descendIntoNextSubfolder() {
    Level& level = levels_.back();
    const std::uint32_t folder = level.toWalk.first++;
    const std::string_view name = findings_.name(folder);
    observer_(name);
    if (!level.keepsLinkCounts) return listSubfolder(folder, std::nullopt);

    const auto status = statusOf(level.directory, name);
    if (!status || !S_ISDIR(status->st_mode)) return findings_.setGone(folder);
    const bool counted = linkCounts_.areKeptOn(status->st_dev).value_or(false);
    if (counted && subfoldersByLinkCount(status->st_nlink) == 0U) return;
    listSubfolder(folder, counted ? std::optional(status->st_nlink) : std::nullopt);
}

/// The link count is nothing where the folder has yet to be asked for it.
void SubtreeWalker::listSubfolder(std::uint32_t folder, std::optional<nlink_t> linkCount) {
    Level level;
    level.folder = folder;
    const FileDescriptor& parent = levels_.back().directory;
    level.directory = openSubfolder(parent, findings_.name(folder));
    if (!level.directory) {
        const auto status = statusOf(parent, findings_.name(folder));
        if (!status || !S_ISDIR(status->st_mode)) findings_.setGone(folder);
        return;
    }
    level.keepsLinkCounts = linkCount.has_value();
    struct stat status {};
    if (!linkCount && fstat(level.directory.get(), &status) == 0) {
        level.keepsLinkCounts = linkCounts_.areKeptOn(level.directory.get(), status.st_dev);
        if (level.keepsLinkCounts) linkCount = status.st_nlink;
    }
    const std::size_t most = linkCount ? subfoldersByLinkCount(*linkCount).value_or(anyNumber) : anyNumber;
    level.toWalk = findings_.addSubfoldersOf(level.directory.get(), most);
    findings_.setSubfolders(folder, level.toWalk);
    if (level.toWalk.size() > 0) enter(std::move(level));
}

void SubtreeWalker::enter(Level level) {
    levels_.push_back(std::move(level));
    closeLevelFarAbove();
}

void SubtreeWalker::closeLevelFarAbove() {
    if (levels_.size() <= mostOpenLevels) return;
    Level& level = levels_[levels_.size() - mostOpenLevels];
    struct stat status {};
    if (!level.directory || fstat(level.directory.get(), &status) != 0) return;
    level.device = status.st_dev;
    level.inode = status.st_ino;
    level.directory.close();
}

void SubtreeWalker::leave() {
    const Level left = std::move(levels_.back());
    levels_.pop_back();
    if (left.following != nullptr) findings_.setFollowingSubtrees(*left.folder, left.following);
    Level& level = levels_.back();
    if (level.directory) return;

    const auto isLevel = [&level](const FileDescriptor& directory) {
        struct stat status {};
        return directory && fstat(directory.get(), &status) == 0 && status.st_dev == level.device &&
               status.st_ino == level.inode;
    };
    FileDescriptor directory = openForListing(left.directory.get(), "..");
    // Somebody moved the folder that is being left: its way up ends elsewhere now.
    if (!isLevel(directory)) directory = reopenedFromBase();
    if (isLevel(directory)) {
        level.directory = std::move(directory);
        return;
    }
    for (; level.toWalk.size() > 0; ++level.toWalk.first) findings_.setGone(level.toWalk.first);
}

FileDescriptor SubtreeWalker::reopenedFromBase() const {
    FileDescriptor directory(fcntl(levels_.front().directory.get(), F_DUPFD_CLOEXEC, 0));
    for (std::size_t depth = 1; depth < levels_.size() && directory; ++depth)
        directory = openSubfolder(directory, findings_.name(*levels_[depth].folder));
    return directory;
}

/// The subfolders nearest to the base are the ones with most below them.
void SubtreeWalker::share() {
    for (Level& level : levels_) {
        const bool isDeepest = &level == &levels_.back();
        const std::uint32_t count = isDeepest ? level.toWalk.size() / 2 : (level.toWalk.size() + 1) / 2;
        if (count > 0 && level.directory) return shareEndOf(level, count);
    }
}

void SubtreeWalker::shareEndOf(Level& level, std::uint32_t count) {
    Subtrees shared;
    shared.parent = FileDescriptor(fcntl(level.directory.get(), F_DUPFD_CLOEXEC, 0));
    if (!shared.parent) return;
    const std::uint32_t first = level.toWalk.end - count;
    shared.names = findings_.names({first, level.toWalk.end});
    shared.following = level.following;
    level.following = &exchange_.give(std::move(shared));
    level.toWalk.end = first;
    if (level.folder)
        findings_.setSubfolders(*level.folder, {findings_.subfolders(*level.folder).first, first});
}

} // namespace brimwick
