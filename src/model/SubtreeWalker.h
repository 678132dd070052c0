#pragma once

#include "model/FolderFindings.h"
#include "model/LinkCounts.h"
#include "model/SubtreeExchange.h"
#include "platform/ports/FileDescriptor.h"

#include <sys/types.h>

#include <functional>
#include <optional>
#include <stop_token>
#include <string_view>
#include <vector>

namespace brimwick {

/// Receives the name of each subfolder just before a walk descends into it. Called from every walking thread.
using FolderNameObserver = std::function<void(std::string_view)>;

/// Walks subtrees, depth first, and shares them with threads that have none. Where the file system counts the
/// subfolders of a folder, one without any is not even opened. However deep the folders lie, few are open at
/// a time. One thread.
class SubtreeWalker {
  public:
    /// All references must outlive the walker.
    SubtreeWalker(FolderFindings& findings, SubtreeExchange& exchange, const FolderNameObserver& observer,
                  std::stop_token stop);

    /// False when the walk was told to stop; the findings are incomplete then.
    bool walk(Subtrees& subtrees);

  private:
    /// A folder on the way down to the one being listed, with subfolders yet to be walked.
    struct Level {
        /// Whose subfolders these are; nothing for the first level.
        std::optional<std::uint32_t> folder;
        FolderRange toWalk;
        const Subtrees* following = nullptr;
        /// Not open while the walk is far below.
        FileDescriptor directory;
        dev_t device = 0;
        ino_t inode = 0;
        bool keepsLinkCounts = false;
    };

    void start(Subtrees& subtrees);
    void descendIntoNextSubfolder();
    void listSubfolder(std::uint32_t folder, std::optional<nlink_t> linkCount);
    void enter(Level level);
    void leave();
    void closeLevelFarAbove();
    FileDescriptor reopenedFromBase() const;
    void share();
    void shareEndOf(Level& level, std::uint32_t count);

    FolderFindings& findings_;
    SubtreeExchange& exchange_;
    const FolderNameObserver& observer_;
    std::stop_token stop_;
    LinkCounts linkCounts_;
    std::vector<Level> levels_;
};

} // namespace brimwick
