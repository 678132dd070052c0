#pragma once

#include <string>
#include <string_view>

namespace brimwick {

/// Appends the bytes as a JSON string, in quotes. A byte that is not part of UTF-8 becomes U+FFFD.
void appendJsonString(std::string_view bytes, std::string& json);

/// Appends the bytes in base64, padded.
void appendBase64(std::string_view bytes, std::string& text);

} // namespace brimwick
