#include "platform/linux/inotify/RootCoverage.h"

#include <algorithm>
#include <sstream>

namespace brimwick {

bool isSameOrBelow(const std::string& path, const std::string& folder) {
    if (!path.starts_with(folder)) return false;
    return path.size() == folder.size() || folder.ends_with('/') || path[folder.size()] == '/';
}

bool leadsTo(const std::string& folder, const std::string& path, bool (*isIndexedName)(std::string_view)) {
    if (!isSameOrBelow(path, folder)) return false;
    std::istringstream below(path.substr(folder.size()));
    for (std::string name; std::getline(below, name, '/');)
        if (!name.empty() && !isIndexedName(name)) return false;
    return true;
}

bool RootCoverage::covers(const FolderPath& folder) {
    if (folder.isRoot()) {
        coveredDepth_.reset();
        rootsLieBelow_ = false;
        for (std::size_t i = 0; i < roots_.size(); ++i) {
            if (isSameOrBelow(folder.text(), roots_[i])) coveredDepth_ = 0;
            if (!leadsTo(folder.text(), roots_[i], isIndexedName_)) continue;
            met_[i] = true;
            rootsLieBelow_ = true;
        }
        return coveredDepth_.has_value();
    }
    if (coveredDepth_ && folder.depth() > *coveredDepth_) return true;
    coveredDepth_.reset();
    if (rootsLieBelow_ && std::ranges::find(roots_, folder.text()) != roots_.end())
        coveredDepth_ = folder.depth();
    return coveredDepth_.has_value();
}

bool RootCoverage::metAllRoots() const {
    return std::ranges::all_of(met_, [](bool met) { return met; });
}

} // namespace brimwick
