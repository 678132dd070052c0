#include "platform/linux/inotify/WatchLimit.h"

#include <algorithm>
#include <fstream>
#include <limits>

namespace brimwick {
namespace {

constexpr std::size_t largestReserve = 4096;

std::size_t systemLimit() {
    std::size_t limit = 0;
    std::ifstream file("/proc/sys/fs/inotify/max_user_watches");
    return file >> limit ? limit : std::numeric_limits<int>::max();
}

} // namespace

WatchLimit::WatchLimit(std::optional<std::size_t> limit) : given_(limit) {
    startAnew();
}

void WatchLimit::startAnew() {
    const std::size_t most = given_ ? *given_ : systemLimit();
    reserve_ = std::min(most / 16, largestReserve);
    allowed_ = most - reserve_;
}

void WatchLimit::wasReachedAt(std::size_t watches) {
    allowed_ = std::min(allowed_, watches - std::min(reserve_, watches / 2));
}

} // namespace brimwick
