#pragma once

#include "actions/Destination.h"
#include "actions/TransferContext.h"
#include "actions/TrashFolder.h"

#include <map>
#include <string>

namespace brimwick {

/// Moves and copies of one run that keep the desktop's Trash in order: what arrives there is put on record,
/// what leaves it is struck off. Nothing is ever replaced. One thread at a time; blocks until done.
class FileTransfer {
  public:
    using NextPath = std::function<std::string()>;

    FileTransfer(const std::string& realHomeDirectory, TransferContext context)
        : trash_(realHomeDirectory), context_(context) {}

    /// `nextPath` yields another path in the same folder when one is taken. The path that it got in the end.
    tl::expected<std::string, FileError> move(const std::string& source, const std::string& destination,
                                              NextPath nextPath) const;
    tl::expected<std::string, FileError> copy(const std::string& source, const std::string& destination,
                                              NextPath nextPath) const;
    /// Moves an item into the user's Trash under that very name; a taken name is an error.
    tl::expected<std::string, FileError> moveToTrash(const std::string& source,
                                                     const std::string& name) const;

  private:
    tl::expected<Destination, FileError> prepare(const std::string& source, const std::string& destination,
                                                 NextPath nextPath) const;

    bool isDesktopTrash(const std::string& folder) const;

    TrashFolder trash_;
    /// What was asked of the folders of this run.
    mutable std::map<std::string, bool> isTrash_;
    TransferContext context_;
};

} // namespace brimwick
