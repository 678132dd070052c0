#include "app/commands/AbsoluteFolder.h"

#include "model/PathText.h"

#include <algorithm>
#include <filesystem>

namespace brimwick {

tl::expected<std::string, std::string> absoluteFolder(const std::string& given) {
    namespace fs = std::filesystem;
    std::error_code failure;
    const bool isFolder = fs::is_directory(given, failure);
    if (!failure && !isFolder) failure = std::make_error_code(std::errc::not_a_directory);
    fs::path path = given;
    // Where ".." leads depends on the links before it: only the disk knows.
    const bool climbs = std::ranges::find(path, "..") != path.end();
    if (!failure) path = climbs ? fs::canonical(path, failure) : fs::absolute(path, failure);
    if (failure) return tl::unexpected(given + ": " + failure.message());
    return std::string(withoutTrailingSlashes(path.lexically_normal().string()));
}

} // namespace brimwick
