#pragma once

#include <string>
#include <string_view>

namespace brimwick {

/// Whether the bytes are well-formed UTF-8.
bool isUtf8(std::string_view bytes);

/// Whether an XML document gives these bytes back as they are: UTF-8, without control characters (a carriage
/// return would be read as a line feed).
bool survivesXml(std::string_view bytes);

/// The bytes as UTF-8: each that is not part of a character becomes U+FFFD.
std::string withReplacementCharacters(std::string_view bytes);

/// The bytes without what no XML document may hold.
std::string withoutWhatXmlCannotHold(std::string_view bytes);

} // namespace brimwick
