#pragma once

#include "actions/OpenFolder.h"

#include <tl/expected.hpp>

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace brimwick {

/// The folders that a run over many items works in, each opened once, and those of them in which names have
/// changed that may not be durable yet. One thread at a time.
class OpenFolders {
  public:
    /// That of an earlier call for the same path, if the path led to it not many calls ago.
    tl::expected<OpenFolder, FileError> open(const std::string& path);
    tl::expected<ItemPlace, FileError> openPlace(const std::string& path);
    /// The next call for each path sees where it leads then.
    void lookAnew() { folders_.clear(); }
    /// The same for what lies at the path and below it, which was moved away.
    void forget(const std::string& path);

    /// Items of the one folder cannot be renamed into the other one.
    void noteCrossing(const std::string& from, const std::string& to) { crossing_ = {from, to}; }
    bool isAnyKnownToCross() const { return !crossing_.first.empty(); }
    /// Whether that was noted last.
    bool isKnownToCross(const std::string& from, const std::string& to) const {
        return crossing_.first == from && crossing_.second == to;
    }

    void noteChange(const OpenFolder& folder);
    /// Whether so many wait to be made durable that it should be done soon.
    bool isFull() const { return changed_.size() >= mostHeldOpen; }
    /// Makes all changed names durable; the first error, after which they do not wait any more.
    tl::expected<void, FileError> syncChanged();

  private:
    static constexpr std::size_t mostHeldOpen = 16;

    struct Known {
        OpenFolder folder;
        dev_t device;
        ino_t inode;
        int uses; ///< since it was last looked at
    };
    std::map<std::string, Known> folders_;
    std::vector<OpenFolder> changed_;
    std::pair<std::string, std::string> crossing_;
};

} // namespace brimwick
