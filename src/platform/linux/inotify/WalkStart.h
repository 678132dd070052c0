#pragma once

#include <sys/stat.h>

#include <chrono>

namespace brimwick {

/// The moment at which a walk began, for telling what may have changed since. Any thread.
class WalkStart {
  public:
    static WalkStart now();

    /// Whether the file may have changed since, by its times. In doubt yes: file systems keep coarse times,
    /// and after the wall clock was set none can be compared.
    bool mayPrecedeChangeOf(const struct stat& file) const;

  private:
    std::chrono::nanoseconds wallClock_{0};
    std::chrono::nanoseconds sinceBoot_{0};
};

/// When the content or the place of a file changed last, since the epoch.
std::chrono::nanoseconds changeTime(const struct stat& file);

/// How far the times that a file system keeps may lag behind.
inline constexpr std::chrono::nanoseconds coarsenessOfFileTimes = std::chrono::milliseconds(2500);

/// The wall clock, since the epoch.
std::chrono::nanoseconds wallClockNow();

} // namespace brimwick
