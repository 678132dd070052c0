#pragma once

#include <sys/resource.h>

namespace brimwick {

/// Lets others go before the calling thread, and before those that it starts from now on.
inline void lowerThreadPriority() {
    constexpr int niceness = 10;
    // On Linux this concerns the thread alone. Where it is refused, nothing is lost.
    setpriority(PRIO_PROCESS, 0, niceness);
}

} // namespace brimwick
