#pragma once

#include "actions/EntryStamp.h"
#include "actions/OpenFolder.h"

#include <string>
#include <system_error>

namespace brimwick {

/// Removes an item of our own, a whole folder included, read-only folders in it too. Nothing there is no
/// error.
[[nodiscard]] std::error_code removeTree(int folder, const std::string& name);

/// Removes exactly the entries of the log, where the item of that log now goes by `name`. Ends at the first
/// entry that cannot be removed, as a folder with something else in it.
[[nodiscard]] std::error_code removeLogged(int folder, const std::string& name, const CopyLog& log);

} // namespace brimwick
