#pragma once

#include "platform/linux/inotify/FolderPath.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace brimwick {

/// Tells, folder by folder in the order of a list, which ones are one of the given roots or lie below one.
class RootCoverage {
  public:
    /// The roots must outlive it.
    RootCoverage(const std::vector<std::string>& roots, bool (*isIndexedName)(std::string_view))
        : roots_(roots), isIndexedName_(isIndexedName), met_(roots.size()) {}

    /// `folder` stands at the next folder of the list, after the one asked before.
    bool covers(const FolderPath& folder);
    /// Whether every root belongs to what was asked about.
    bool metAllRoots() const;

  private:
    const std::vector<std::string>& roots_;
    bool (*isIndexedName_)(std::string_view);
    std::vector<bool> met_;
    bool rootsLieBelow_ = false;
    std::optional<std::size_t> coveredDepth_;
};

/// Whether a walk of the folder leads to the path: it is the folder, or lies below it under names that are
/// taken up.
bool leadsTo(const std::string& folder, const std::string& path, bool (*isIndexedName)(std::string_view));

/// Whether the path is that of the folder or lies below it.
bool isSameOrBelow(const std::string& path, const std::string& folder);

} // namespace brimwick
