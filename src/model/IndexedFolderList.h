#pragma once

#include "model/BWSelectedFileOrFolder.h"

#include <string>
#include <vector>

namespace brimwick {

/// The rules of the list of indexed folders.
namespace IndexedFolderList {

/// Whether the path counts as that of a subfolder of a listed one: a listed path occurs anywhere in it. No
/// regard is paid to where components begin and end.
bool coversPath(const std::vector<BWSelectedFileOrFolder>& folders, const std::string& path);
bool hasTrashFolder(const std::vector<BWSelectedFileOrFolder>& folders);
/// By the names that are displayed, ascending.
void sortByName(std::vector<BWSelectedFileOrFolder>& folders);

} // namespace IndexedFolderList

} // namespace brimwick
