#include "actions/ProgressText.h"

#include "actions/FreeSpace.h"

#include <algorithm>

namespace brimwick {

namespace {

/// Before that, a rate says little.
constexpr std::chrono::milliseconds shortestForRate{200};

std::string counted(std::int64_t count, const char* unit) {
    return "about " + std::to_string(count) + ' ' + unit + (count == 1 ? "" : "s") + " left";
}

std::string timeLeftText(std::int64_t seconds) {
    constexpr std::int64_t minute = 60;
    constexpr std::int64_t hour = 60 * minute;
    if (seconds <= 5) return "a few seconds left";
    // In steps, so that it can be read.
    if (seconds <= 55) return counted((seconds + 4) / 5 * 5, "second");
    if (seconds <= 90 * minute) return counted((seconds + minute / 2) / minute, "minute");
    return counted((seconds + hour / 2) / hour, "hour");
}

std::string size(std::int64_t bytes) {
    return sizeText(static_cast<std::uint64_t>(std::max<std::int64_t>(bytes, 0)));
}

} // namespace

std::string progressText(std::int64_t bytes, std::int64_t totalBytes, std::chrono::milliseconds elapsed) {
    if (bytes <= 0 && totalBytes <= 0) return {};
    std::string text = size(bytes);
    if (totalBytes > 0) text += " of " + size(std::max(bytes, totalBytes));
    if (bytes <= 0 || elapsed < shortestForRate) return text;
    if (totalBytes > 0 && bytes >= totalBytes) return text + ", finishing";
    const double perSecond = static_cast<double>(bytes) * 1000 / static_cast<double>(elapsed.count());
    text += ", " + size(static_cast<std::int64_t>(perSecond)) + "/s";
    const std::int64_t left = totalBytes - bytes;
    if (totalBytes > 0)
        text += ", " + timeLeftText(static_cast<std::int64_t>(static_cast<double>(left) / perSecond));
    return text;
}

} // namespace brimwick
