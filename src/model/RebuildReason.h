#pragma once

#include <cstdint>

namespace brimwick {

/// Why the index is rebuilt, as the code that goes with every request.
using RebuildReasonCode = std::int8_t;
inline constexpr RebuildReasonCode rebuildReasonFirstIndex = 0;
inline constexpr RebuildReasonCode rebuildReasonPreferencesChanged = 1;
inline constexpr RebuildReasonCode rebuildReasonSubfolderChanged = 2;

/// What the user gets to see and hear of a rebuild: preference keys and texts.
struct RebuildReason {
    const char* progressKey;
    const char* animationKey;
    const char* toolTip;
    const char* soundKey;
};

/// Null for a code that stands for no reason.
const RebuildReason* rebuildReason(RebuildReasonCode code);
/// Every code has one.
const char* rebuildCompletionMessage(RebuildReasonCode code);

} // namespace brimwick
