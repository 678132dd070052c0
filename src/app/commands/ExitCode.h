#pragma once

namespace brimwick {

/// How a command ends.
namespace ExitCode {
inline constexpr int done = 0;
inline constexpr int failed = 1;
inline constexpr int usage = 2;
} // namespace ExitCode

} // namespace brimwick
