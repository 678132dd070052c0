#pragma once

#include <cstdint>

namespace brimwick {

/// What the picker was opened for. The same numbers are an action's type.
using Mode = std::int32_t;
inline constexpr Mode BWModeMove = 0;
inline constexpr Mode BWModeCopy = 1;
inline constexpr Mode BWModeOpen = 2;

} // namespace brimwick
