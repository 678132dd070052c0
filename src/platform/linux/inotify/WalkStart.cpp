#include "platform/linux/inotify/WalkStart.h"

#include <time.h>

namespace brimwick {
namespace {

constexpr std::chrono::nanoseconds driftOfClocks = std::chrono::seconds(1);

std::chrono::nanoseconds duration(const timespec& time) {
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

std::chrono::nanoseconds read(clockid_t clock) {
    timespec time{};
    clock_gettime(clock, &time);
    return duration(time);
}

} // namespace

std::chrono::nanoseconds wallClockNow() {
    return read(CLOCK_REALTIME);
}

std::chrono::nanoseconds changeTime(const struct stat& file) {
    return std::max(duration(file.st_ctim), duration(file.st_mtim));
}

WalkStart WalkStart::now() {
    WalkStart start;
    start.wallClock_ = wallClockNow();
    start.sinceBoot_ = read(CLOCK_BOOTTIME);
    return start;
}

bool WalkStart::mayPrecedeChangeOf(const struct stat& file) const {
    if (changeTime(file) >= wallClock_ - coarsenessOfFileTimes) return true;
    const auto walkTime = wallClockNow() - wallClock_;
    const auto realTime = read(CLOCK_BOOTTIME) - sinceBoot_;
    return walkTime < realTime - driftOfClocks || walkTime > realTime + driftOfClocks;
}

} // namespace brimwick
