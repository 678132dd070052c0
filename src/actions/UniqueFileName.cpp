#include "actions/UniqueFileName.h"

#include "actions/OpenFolder.h"
#include "model/PathText.h"

#include <sys/stat.h>

#include <cstdint>

namespace brimwick {

namespace {

/// The last candidate's number.
std::int32_t uniqueNameCounter = 0;

/// The dot that begins the extension; a name's first character and last one are no such dot.
std::size_t extensionDot(const std::string& name) {
    const std::size_t dot = name.rfind('.');
    const bool begins = dot != std::string::npos && dot > 0 && dot + 1 < name.size();
    return begins ? dot : name.size();
}

} // namespace

std::string uniquePath(const std::string& takenPath) {
    const std::string name = lastPathComponent(takenPath);
    const std::string folder = parentPath(takenPath);
    const std::size_t dot = extensionDot(name);
    for (;;) {
        const std::string number = "(" + std::to_string(++uniqueNameCounter) + ")";
        const std::string candidate = joinPath(folder, name.substr(0, dot) + number + name.substr(dot));
        if (!somethingLiesAt(candidate)) return candidate;
    }
}

bool somethingLiesAt(const std::string& path) {
    struct stat status {};
    return lstat(path.c_str(), &status) == 0;
}

} // namespace brimwick
