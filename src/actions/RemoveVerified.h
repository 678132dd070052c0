#pragma once

#include "actions/EntryStamp.h"
#include "actions/OpenFolder.h"

#include <tl/expected.hpp>

namespace brimwick {

/// Whether the user may take names out of the folder of this item at all: asked before a long copy.
[[nodiscard]] std::error_code checkRemovable(const ItemPlace& source);

/// Removes an item of which a complete, durable copy exists, provided that it still is what was copied and
/// that no program has one of its files open for writing. Otherwise it stays, or comes back, under its own
/// name.
tl::expected<void, FileError> removeVerified(const ItemPlace& source, const CopyLog& log);

} // namespace brimwick
