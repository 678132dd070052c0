#include "model/FolderIndexer.h"

namespace brimwick {

std::shared_ptr<const FolderIndex> indexOfFolders(const std::vector<std::string>& rootPaths,
                                                  const FolderNameObserver& observer,
                                                  const std::stop_token& stop) {
    FolderTree indexUnderConstruction;
    FolderWalk walk(indexUnderConstruction, observer, stop);
    for (const std::string& path : rootPaths)
        if (!walk.addRootDirectoryAndSubFoldersToIndex(path)) return nullptr;
    return std::make_shared<const FolderIndex>(std::move(indexUnderConstruction));
}

std::vector<std::string> FolderIndexer::indexedFolderPaths() const {
    std::vector<std::string> paths;
    paths.reserve(indexedFolders_.size());
    for (const BWSelectedFileOrFolder& folder : indexedFolders_) paths.push_back(folder.path());
    return paths;
}

} // namespace brimwick
