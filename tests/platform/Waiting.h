#pragma once

#include <QtCore/qtestsupport_core.h>

namespace brimwick {

/// Runs the main loop until the condition holds. False when it did not in ten seconds.
template<typename Condition>
bool waitFor(Condition condition) {
    return QTest::qWaitFor(condition, 10'000);
}

/// Runs the main loop for a time in which something must not happen, or in which a key is held.
inline void runLoopFor(int milliseconds) {
    QTest::qWait(milliseconds);
}

} // namespace brimwick
