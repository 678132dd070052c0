#pragma once

#include <cstdint>
#include <string_view>

namespace brimwick {

/// How often a byte occurs, in a plain loop that the compiler turns into vectors: the yardstick of a search.
std::uint32_t countBytes(std::string_view bytes, char wanted);

} // namespace brimwick
