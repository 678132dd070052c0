#include "platform/linux/inotify/WatchLimit.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <limits>

namespace brimwick {
namespace {

constexpr std::size_t largestReserve = 4096;
constexpr std::size_t comfortableLimit = 1048576;

std::size_t systemLimit() {
    std::size_t limit = 0;
    std::ifstream file("/proc/sys/fs/inotify/max_user_watches");
    return file >> limit ? limit : std::numeric_limits<int>::max();
}

} // namespace

WatchLimit::WatchLimit(std::optional<std::size_t> limit) {
    const std::size_t most = limit ? *limit : systemLimit();
    reserve_ = std::min(most / 16, largestReserve);
    allowed_ = most - reserve_;
}

void WatchLimit::wasReachedAt(std::size_t watches) {
    allowed_ = std::min(allowed_, watches - std::min(reserve_, watches / 2));
}

std::string watchLimitReached(std::size_t unwatched, std::size_t all) {
    std::size_t enough = comfortableLimit;
    while (enough < 2 * all) enough *= 2;
    return "Changes in " + std::to_string(unwatched) + " of " + std::to_string(all) +
           " folders will be noticed late, because the system lets a user watch no more of them; to raise "
           "its "
           "limit, run \"sudo sysctl fs.inotify.max_user_watches=" +
           std::to_string(enough) + "\".";
}

std::string watchingIsUnavailable(int error) {
    std::string text = "Changes of folders will be noticed late, because the system cannot watch them: ";
    if (error == EMFILE)
        return text + "other programs have used all that it allows; to raise its limit, run \"sudo sysctl "
                      "fs.inotify.max_user_instances=1024\".";
    return text + std::strerror(error) + ".";
}

} // namespace brimwick
