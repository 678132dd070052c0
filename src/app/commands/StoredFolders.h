#pragma once

#include <tl/expected.hpp>

#include <string>
#include <vector>

namespace brimwick {

/// The folders to index by the preferences of the user with this home, as the program reads them when it
/// starts; nothing is written. The error says why the preferences cannot be read.
tl::expected<std::vector<std::string>, std::string> storedFolders(const std::string& homeDirectory,
                                                                  const std::string& resourceDirectory);

} // namespace brimwick
