#pragma once

#include "actions/CopyBatch.h"
#include "actions/Destination.h"
#include "actions/TransferContext.h"
#include "actions/TrashFolder.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace brimwick {

/// Moves and copies of one run that keep the desktop's Trash in order: what arrives there is put on record,
/// what leaves it is struck off. Nothing is ever replaced. One thread at a time; blocks until done.
class FileTransfer {
  public:
    using NextPath = std::function<std::string()>;
    struct Item {
        std::string source;
        std::string destination;
        /// Yields another path in the same folder when one is taken.
        NextPath nextPath;
        /// What its files hold, in bytes, if that is known; 0 otherwise.
        std::int64_t size = 0;
    };

    FileTransfer(const std::string& realHomeDirectory, TransferContext context)
        : trash_(realHomeDirectory), context_(context) {}

    /// The path that it got in the end.
    tl::expected<std::string, FileError> move(Item item) const;
    /// A batch that takes items into one folder in any case by way of copies.
    tl::expected<std::unique_ptr<CopyBatch>, FileError> planCopies(std::vector<Item> items,
                                                                   bool isMove) const;
    /// Finishes such a batch, as CopyBatch::finish().
    CopyBatch::Results finishCopies(CopyBatch& batch) const;
    /// Moves an item into the user's Trash under that very name; a taken name is an error.
    tl::expected<std::string, FileError> moveToTrash(const std::string& source,
                                                     const std::string& name) const;

  private:
    tl::expected<PlannedTransfer, FileError> prepare(Item item) const;
    void leave(const std::string& source) const;
    bool isDesktopTrash(const std::string& folder) const;

    TrashFolder trash_;
    /// What was asked of the folders of this run.
    mutable std::map<std::string, bool> isTrash_;
    TransferContext context_;
};

} // namespace brimwick
