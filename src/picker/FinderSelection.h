#pragma once

#include "model/BWSelectedFileOrFolder.h"

#include <string>
#include <vector>

namespace brimwick {

/// The entries for the URLs of a selection, in their order. Left out is what nobody could mean to move, as
/// icons of a desktop stand for it: URLs of no local file, the root folder, the home folder, and paths at
/// which nothing lies.
std::vector<BWSelectedFileOrFolder> finderSelection(const std::vector<std::string>& urls,
                                                    const std::string& home);

} // namespace brimwick
