#include "platform/linux/filemanagers/KnownFileManagers.h"

#include <algorithm>

namespace brimwick {

const std::vector<FileManagerAdapter>& knownFileManagers() {
    static const std::vector<FileManagerAdapter> known{
        pcmanfmQt(),
    };
    return known;
}

const FileManagerAdapter* fileManagerOf(const WindowTraits& window) {
    const auto& known = knownFileManagers();
    const auto found =
        std::ranges::find_if(known, [&](const FileManagerAdapter& adapter) { return adapter.owns(window); });
    return found == known.end() ? nullptr : &*found;
}

} // namespace brimwick
