#include "model/PathText.h"

namespace brimwick {

std::string_view withoutTrailingSlashes(std::string_view path) {
    while (path.size() > 1 && path.ends_with('/')) path.remove_suffix(1);
    return path;
}

std::string lastPathComponent(std::string_view path) {
    path = withoutTrailingSlashes(path);
    if (path == "/") return "/";
    return std::string(path.substr(path.rfind('/') + 1));
}

std::string parentPath(std::string_view path) {
    path = withoutTrailingSlashes(path);
    const std::size_t slash = path.rfind('/');
    if (slash == std::string_view::npos) return {};
    return std::string(withoutTrailingSlashes(path.substr(0, slash + 1)));
}

std::string joinPath(std::string_view folder, std::string_view name) {
    std::string path(folder);
    if (!path.empty() && !path.ends_with('/')) path += '/';
    path += name;
    return path;
}

} // namespace brimwick
