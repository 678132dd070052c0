// mover move|copy TARGET FILE...: one file operation after the other, for the fault sweep.

#include "actions/CopyItem.h"
#include "actions/MoveItem.h"
#include "actions/UniqueFileName.h"

#include <cstdio>
#include <span>

int main(int count, char** words) {
    const std::span arguments(words, static_cast<std::size_t>(count));
    if (arguments.size() < 4) {
        std::fputs("usage: mover move|copy TARGET FILE...\n", stderr);
        return 2;
    }
    const auto operation = std::string(arguments[1]) == "move" ? brimwick::moveItem : brimwick::copyItem;
    int result = 0;
    for (const std::string source : arguments.subspan(3)) {
        const std::string path = std::string(arguments[2]) + "/" + brimwick::lastPathComponent(source);
        const brimwick::Destination destination{path, [&path] { return brimwick::uniquePath(path); }, {}, {}};
        if (const auto done = operation(source, destination); !done) {
            std::fprintf(stderr, "%s\n", done.error().description.c_str());
            result = 1;
        }
    }
    return result;
}
