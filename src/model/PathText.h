#pragma once

#include <string>
#include <string_view>

namespace brimwick {

/// The last component of a path, trailing slashes left out; "/" for the root, empty for the empty path.
std::string lastPathComponent(std::string_view path);

/// The path without its last component: "/a" for "/a/b/", "/" for "/a" and "/", empty for "a".
std::string parentPath(std::string_view path);

/// The path of `name` in the folder, with one slash between them.
std::string joinPath(std::string_view folder, std::string_view name);

/// The path without the slashes at its end, save for "/" itself.
std::string_view withoutTrailingSlashes(std::string_view path);

} // namespace brimwick
