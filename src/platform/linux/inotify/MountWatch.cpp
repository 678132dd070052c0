#include "platform/linux/inotify/MountWatch.h"

#include "platform/linux/inotify/Paths.h"
#include "platform/ports/FolderEventStream.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <sstream>

namespace brimwick {
namespace {

constexpr const char* mountTable = "/proc/self/mountinfo";

std::string contentOf(int descriptor) {
    std::string content;
    std::array<char, 65536> piece;
    for (;;) {
        const ssize_t size =
            pread(descriptor, piece.data(), piece.size(), static_cast<off_t>(content.size()));
        if (size <= 0) return content;
        content.append(piece.data(), static_cast<std::size_t>(size));
    }
}

/// The table writes spaces, tabs, line breaks and backslashes as octal numbers.
std::string unescaped(const std::string& text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\\' && i + 3 < text.size()) {
            result +=
                static_cast<char>((text[i + 1] - '0') * 64 + (text[i + 2] - '0') * 8 + (text[i + 3] - '0'));
            i += 3;
        } else {
            result += text[i];
        }
    }
    return result;
}

} // namespace

MountWatch::MountWatch(const FolderRules& rules)
    : rules_(rules), mounts_(open(mountTable, O_RDONLY | O_CLOEXEC)) {}

std::vector<std::uint32_t> MountWatch::changes(const std::set<std::string>& roots) {
    std::vector<std::uint32_t> flags;
    Mounts now = presentMounts();
    if (known_ && hasRelevantBeside(*known_, now, roots))
        flags.push_back(FolderEventFlag::isFolder | FolderEventFlag::created);
    if (known_ && hasRelevantBeside(now, *known_, roots))
        flags.push_back(FolderEventFlag::isFolder | FolderEventFlag::removed);
    known_ = std::move(now);
    return flags;
}

MountWatch::Mounts MountWatch::presentMounts() const {
    Mounts mounts;
    if (!mounts_) return mounts;
    std::istringstream table(contentOf(mounts_.get()));
    for (std::string line; std::getline(table, line);) {
        std::istringstream fields(line);
        std::string number, parent, device, part, mountPoint;
        fields >> number >> parent >> device >> part >> mountPoint;
        mounts.emplace(unescaped(mountPoint), device + " " + part);
    }
    return mounts;
}

/// Whether there is a mount in `mounts`, but not in `others`, that concerns a root.
bool MountWatch::hasRelevantBeside(const Mounts& others, const Mounts& mounts,
                                   const std::set<std::string>& roots) const {
    Mounts rest;
    std::ranges::set_difference(mounts, others, std::inserter(rest, rest.end()));
    return std::ranges::any_of(rest,
                               [this, &roots](const auto& mount) { return concerns(mount.first, roots); });
}

bool MountWatch::concerns(const std::string& mountPoint, const std::set<std::string>& roots) const {
    return std::ranges::any_of(roots, [this, &mountPoint](const std::string& root) {
        return isSameOrBelow(root, mountPoint) || leadsTo(root, mountPoint, rules_);
    });
}

} // namespace brimwick
