#pragma once

#include <algorithm>
#include <string_view>

namespace brimwick {

inline char asciiLowerCase(char character) {
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
}

/// Whether the texts are the same, ASCII capitals and small letters held equal.
inline bool isSameIgnoringAsciiCase(std::string_view first, std::string_view second) {
    return std::ranges::equal(first, second, {}, asciiLowerCase, asciiLowerCase);
}

} // namespace brimwick
