#include "platform/linux/inotify/ReachablePath.h"

#include <fcntl.h>

#include <climits>

namespace brimwick {
namespace {

/// Leaves room for "/proc/self/fd/<number>/" before it and for a long name.
constexpr std::size_t longestPiece = PATH_MAX - 512;

bool liesBelow(const std::string& path, const std::string& folder) {
    return path.size() > folder.size() && path.starts_with(folder) && path[folder.size()] == '/';
}

} // namespace

const char* ReachablePath::of(const std::string& path) {
    if (path.size() < PATH_MAX) return path.c_str();
    if (!anchor_ || !liesBelow(path, anchorPath_) || path.size() - anchorPath_.size() > longestPiece) {
        if (!openAnchorOf(path, path.rfind('/'))) return nullptr;
    }
    way_ = "/proc/self/fd/" + std::to_string(anchor_.get());
    way_.append(path, anchorPath_.size());
    return way_.c_str();
}

/// Opens the part of the path that ends there, piece by piece, from what is open already if that lies on it.
bool ReachablePath::openAnchorOf(const std::string& path, std::size_t end) {
    std::size_t start =
        anchor_ && anchorPath_.size() <= end && liesBelow(path, anchorPath_) ? anchorPath_.size() : 0;
    if (start == 0) anchor_ = FileDescriptor();
    while (start < end) {
        std::size_t pieceEnd = end;
        if (end - start > longestPiece) pieceEnd = path.rfind('/', start + longestPiece);
        // From the root of all, or below what is open: then without the slash between.
        const std::string piece =
            path.substr(anchor_ ? start + 1 : start, pieceEnd - (anchor_ ? start + 1 : start));
        FileDescriptor next(
            openat(anchor_ ? anchor_.get() : AT_FDCWD, piece.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
        if (!next) {
            anchor_ = FileDescriptor();
            return false;
        }
        anchor_ = std::move(next);
        start = pieceEnd;
    }
    anchorPath_ = path.substr(0, end);
    return true;
}

} // namespace brimwick
