#include "model/FolderIndexer.h"

#include <cstdio>
#include <exception>

/// Prints every folder of the index of the given roots, in its order, each path closed by a NUL.
int main(int argc, char** argv) {
    try {
        const std::vector<std::string> roots(argv + 1, argv + argc);
        const auto index = brimwick::indexOfFolders(roots, [](std::string_view) {}, {});
        for (brimwick::FolderNumber folder = 0; folder < index->size(); ++folder) {
            const std::string path = index->path(folder);
            std::fwrite(path.c_str(), 1, path.size() + 1, stdout);
        }
        return std::fflush(stdout) == 0 ? 0 : 1;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "folder_lister: %s\n", failure.what());
        return 1;
    }
}
