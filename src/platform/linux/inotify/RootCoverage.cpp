#include "platform/linux/inotify/RootCoverage.h"

#include "platform/linux/inotify/Paths.h"

#include <algorithm>

namespace brimwick {

bool RootCoverage::covers(const FolderPath& folder) {
    if (folder.isRoot()) {
        coveredDepth_.reset();
        rootsLieBelow_ = false;
        for (std::size_t i = 0; i < roots_.size(); ++i) {
            if (isSameOrBelow(folder.text(), roots_[i])) coveredDepth_ = 0;
            if (!leadsTo(folder.text(), roots_[i], rules_)) continue;
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
