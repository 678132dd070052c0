#include "CountingPass.h"

#include <cstdint>

namespace brimwick {

std::uint32_t countBytes(std::string_view bytes, char wanted) {
    std::uint32_t count = 0;
    for (const char byte : bytes) count += byte == wanted ? 1 : 0;
    return count;
}

} // namespace brimwick
