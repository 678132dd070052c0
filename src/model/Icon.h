#pragma once

#include <string>

namespace brimwick {

/// Which image an entry shows. The image itself is made by the interface, for the rows that it paints.
struct Icon {
    enum class Source {
        Folder,  ///< what the desktop shows for any folder
        File,    ///< what the desktop shows for the file at the path `name`
        Resource ///< the program's own image called `name`
    };
    Source source = Source::File;
    std::string name;

    bool operator==(const Icon&) const = default;
};

} // namespace brimwick
