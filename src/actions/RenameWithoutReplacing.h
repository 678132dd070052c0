#pragma once

#include <sys/stat.h>

#include <string>
#include <system_error>

namespace brimwick {

/// Gives an item another name, in the same folder or another one of the same file system. The kernel alone
/// decides whether the name is free (`file_exists` when not); nothing is ever replaced. Folders are
/// descriptors.
///
/// Where the file system cannot rename that way, a file gets its second name before it loses the first, and a
/// folder takes the place of an empty one made for it. Fails where neither is possible.
[[nodiscard]] std::error_code renameWithoutReplacing(int fromFolder, const std::string& fromName,
                                                     int toFolder, const std::string& toName);
/// The same for an item whose status is known.
[[nodiscard]] std::error_code renameWithoutReplacing(const struct stat& item, int fromFolder,
                                                     const std::string& fromName, int toFolder,
                                                     const std::string& toName);

/// One call of the kernel, and its answer as it is: it may know no such rename, or its answer may have been
/// lost.
[[nodiscard]] std::error_code tryRename(int fromFolder, const std::string& fromName, int toFolder,
                                        const std::string& toName);

} // namespace brimwick
