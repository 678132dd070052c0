#include "platform/linux/inotify/Paths.h"

#include <sstream>

namespace brimwick {

std::string parentOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    return slash == 0 || slash == std::string::npos ? "/" : path.substr(0, slash);
}

bool isSameOrBelow(const std::string& path, const std::string& folder) {
    if (!path.starts_with(folder)) return false;
    return path.size() == folder.size() || folder.ends_with('/') || path[folder.size()] == '/';
}

bool leadsTo(const std::string& folder, const std::string& path, const FolderRules& rules) {
    if (!isSameOrBelow(path, folder)) return false;
    std::istringstream below(path.substr(folder.size()));
    for (std::string name; std::getline(below, name, '/');)
        if (!name.empty() && !rules.isIndexedName(name)) return false;
    return true;
}

} // namespace brimwick
