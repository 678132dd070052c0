#include "platform/linux/filemanagers/UriList.h"

#include <algorithm>

namespace brimwick {

std::vector<std::string> parseUriList(std::string_view list) {
    std::vector<std::string> entries;
    while (!list.empty()) {
        std::string_view line = list.substr(0, list.find('\n'));
        list.remove_prefix(std::min(list.size(), line.size() + 1));
        // Some programs end the list with a null character.
        while (line.ends_with('\r') || line.ends_with('\0')) line.remove_suffix(1);
        if (!line.empty() && !line.starts_with('#')) entries.emplace_back(line);
    }
    return entries;
}

} // namespace brimwick
