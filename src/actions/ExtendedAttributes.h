#pragma once

#include <system_error>

namespace brimwick {

/// Makes the user's attributes and the access lists of one open item those of another, removing what it
/// inherited. Where the destination's file system keeps no such attribute at all, that one is left out.
[[nodiscard]] std::error_code copyExtendedAttributes(int from, int to);

} // namespace brimwick
