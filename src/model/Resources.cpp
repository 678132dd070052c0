#include "model/Resources.h"

#include <filesystem>

namespace brimwick {

std::optional<std::string> Resources::pathForResource(std::string_view name, std::string_view type) const {
    std::string path = directory_ + "/" + std::string(name) + "." + std::string(type);
    std::error_code ignored;
    if (!std::filesystem::is_regular_file(path, ignored)) return std::nullopt;
    return path;
}

} // namespace brimwick
