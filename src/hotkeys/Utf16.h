#pragma once

#include <string>
#include <string_view>

namespace brimwick {

/// What keys type, as the window system counts it. A surrogate without its partner becomes U+FFFD.
std::string utf8FromUtf16(std::u16string_view text);

/// In capital letters, by the rules that hold in every language.
std::u16string upperCased(std::u16string_view text);

} // namespace brimwick
