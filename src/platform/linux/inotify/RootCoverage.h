#pragma once

#include "platform/linux/inotify/FolderPath.h"
#include "platform/ports/FolderRules.h"

#include <optional>
#include <string>
#include <vector>

namespace brimwick {

/// Tells, folder by folder in the order of a list, which ones are one of the given roots or lie below one.
class RootCoverage {
  public:
    /// The roots must outlive it.
    RootCoverage(const std::vector<std::string>& roots, const FolderRules& rules)
        : roots_(roots), rules_(rules), met_(roots.size()) {}

    /// `folder` stands at the next folder of the list, after the one asked before.
    bool covers(const FolderPath& folder);
    /// Whether every root belongs to what was asked about.
    bool metAllRoots() const;

  private:
    const std::vector<std::string>& roots_;
    FolderRules rules_;
    std::vector<bool> met_;
    bool rootsLieBelow_ = false;
    std::optional<std::size_t> coveredDepth_;
};

} // namespace brimwick
