#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace brimwick {

/// The file URL of an absolute path, every byte outside the unreserved set percent-encoded; a folder's URL
/// ends in a slash.
std::string fileUrlWithPath(std::string_view path, bool isDirectory);

/// The path with every byte outside the unreserved set, save the slash, percent-encoded.
std::string percentEncodedPath(std::string_view path);

/// The path of a file URL of this machine, byte for byte, without slashes at its end. Nothing for another
/// scheme or host, a query or fragment, a malformed escape, an encoded NUL, and a path that is not absolute.
std::optional<std::string> pathOfFileUrl(std::string_view url);

} // namespace brimwick
