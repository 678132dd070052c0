#pragma once

#include "platform/ports/FolderList.h"

#include <cstddef>
#include <string>
#include <vector>

namespace brimwick {

/// The absolute path of one folder of a list after the other; cheap when they follow each other in order.
class FolderPath {
  public:
    /// The list must outlive it.
    explicit FolderPath(const FolderList& list) : list_(list) {}

    void moveTo(FolderNumber folder);

    /// The rest is valid once it was moved, until it is moved again.
    const std::string& text() const { return text_; }
    /// 0 for a root.
    std::size_t depth() const { return levels_.size() - 1; }
    bool isRoot() const { return levels_.size() == 1; }

  private:
    struct Level {
        FolderNumber folder;
        std::size_t end;
    };

    const FolderList& list_;
    std::string text_;
    std::vector<Level> levels_;
    std::vector<FolderNumber> missing_;
};

/// The number after the last folder below the given one.
FolderNumber endOfSubtree(const FolderList& list, FolderNumber folder);

} // namespace brimwick
