#include "model/IndexedFolderList.h"

#include <algorithm>

namespace brimwick::IndexedFolderList {

bool coversPath(const std::vector<BWSelectedFileOrFolder>& folders, const std::string& path) {
    return std::ranges::any_of(folders, [&path](const BWSelectedFileOrFolder& folder) {
        return !folder.path().empty() && path.find(folder.path()) != std::string::npos;
    });
}

bool hasTrashFolder(const std::vector<BWSelectedFileOrFolder>& folders) {
    return std::ranges::any_of(folders, &BWSelectedFileOrFolder::isTrashFolder);
}

void sortByName(std::vector<BWSelectedFileOrFolder>& folders) {
    std::ranges::stable_sort(folders, {},
                             [](const BWSelectedFileOrFolder& folder) { return folder.name().value_or(""); });
}

} // namespace brimwick::IndexedFolderList
