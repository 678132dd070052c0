#pragma once

#include <string>
#include <string_view>

namespace brimwick {

/// Which folders the index takes up, for whoever must agree with it. Any thread.
struct FolderRules {
    /// Whether a subfolder of this file name is taken up.
    bool (*isIndexedName)(std::string_view fileName) = nullptr;
    /// Appends the names of the subfolders that are taken up of an open directory, each closed by a NUL.
    void (*appendSubfolderNames)(int directory, std::string& names) = nullptr;
};

} // namespace brimwick
