#include "platform/linux/inotify/FolderPath.h"

namespace brimwick {

void FolderPath::moveTo(FolderNumber folder) {
    missing_.clear();
    for (;;) {
        // An ancestor has a smaller number than what lies below it.
        while (!levels_.empty() && levels_.back().folder > folder) levels_.pop_back();
        if (!levels_.empty() && levels_.back().folder == folder) break;
        missing_.push_back(folder);
        const auto parent = list_.parent(folder);
        if (!parent) {
            levels_.clear();
            break;
        }
        folder = *parent;
    }
    text_.resize(levels_.empty() ? 0 : levels_.back().end);
    for (auto next = missing_.rbegin(); next != missing_.rend(); ++next) {
        if (levels_.empty()) {
            text_ = list_.path(*next);
        } else {
            if (!text_.ends_with('/')) text_ += '/';
            text_ += list_.fileName(*next);
        }
        levels_.push_back({*next, text_.size()});
    }
}

FolderNumber endOfSubtree(const FolderList& list, FolderNumber folder) {
    FolderNumber next = folder + 1;
    for (; next < list.size(); ++next) {
        const auto parent = list.parent(next);
        if (!parent || *parent < folder) break;
    }
    return next;
}

} // namespace brimwick
