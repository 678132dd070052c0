#pragma once

#include "platform/linux/inotify/FolderChanges.h"
#include "platform/linux/inotify/Pace.h"
#include "platform/linux/inotify/SubfolderComparison.h"
#include "platform/linux/inotify/WatchTable.h"

#include <map>
#include <set>
#include <string>
#include <vector>

namespace brimwick {

/// Folders that changed while a walk ran, so that it may have missed the change. One thread.
class Suspicions {
  public:
    void add(const std::vector<FolderChanges::Place>& places);
    /// From now on nothing that the walk finds can be trusted.
    void addEverything() { everything_ = true; }
    void clear();

    bool isEmpty() const { return !everything_ && places_.empty(); }
    bool concernsEverything() const { return everything_; }

    /// Compares the suspicious folders with the list, and whole what was moved into them. The flags of one
    /// event at the first difference; 0 when there is none, or when it was given up.
    std::uint32_t difference(const FolderList& list, const WatchTable& table, SubfolderComparison& comparison,
                             Pace& pace) const;

  private:
    bool everything_ = false;
    /// The names of the folders that were moved to each place.
    std::map<WatchNumber, std::set<std::string>> places_;
    std::size_t size_ = 0;
};

} // namespace brimwick
