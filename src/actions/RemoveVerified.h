#pragma once

#include "actions/EntryStamp.h"
#include "actions/JournalEntry.h"
#include "actions/OpenFolder.h"

#include <tl/expected.hpp>

#include <functional>

namespace brimwick {

/// Whether the user may take this item out of its folder at all: asked before a long copy.
[[nodiscard]] std::error_code checkRemovable(const OpenFolder& folder, const struct stat& item);

/// The end of a move between file systems: removes the source, of which a complete, durable copy exists,
/// provided that it still is what was copied and that no program has one of its files open for writing.
/// Otherwise it stays, or comes back, under its own name. It gets a hidden name before, which must be noted
/// already.
tl::expected<void, FileError> claimAndRemove(const ItemPlace& source, const std::string& claimed,
                                             const CopyLog& log, JournalEntry& notes);

struct RemovalError {
    std::error_code code;
    bool isPartlyRemoved;
};

/// The same for a source that goes by its hidden name already, and keeps it when this fails.
/// `lastCheck`, if any, is asked right before anything is removed.
tl::expected<void, RemovalError> removeClaimed(const ItemPlace& source, const std::string& claimed,
                                               const CopyLog& log, JournalEntry& notes,
                                               const std::function<std::error_code()>& lastCheck = {});

} // namespace brimwick
