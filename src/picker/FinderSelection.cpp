#include "picker/FinderSelection.h"

#include "model/FileUrl.h"
#include "model/PathText.h"

#include <sys/stat.h>

namespace brimwick {

std::vector<BWSelectedFileOrFolder> finderSelection(const std::vector<std::string>& urls,
                                                    const std::string& home) {
    std::vector<BWSelectedFileOrFolder> files;
    for (const std::string& url : urls) {
        const std::optional<std::string> path = pathOfFileUrl(url);
        if (!path || *path == "/" || *path == withoutTrailingSlashes(home)) continue;
        struct stat status {};
        if (lstat(path->c_str(), &status) != 0) continue;
        BWSelectedFileOrFolder file;
        file.setName(lastPathComponent(*path));
        file.setPath(*path);
        file.setIcon(Icon{Icon::Source::File, *path});
        file.setUrl(url);
        files.push_back(file);
    }
    return files;
}

} // namespace brimwick
