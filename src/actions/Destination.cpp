#include "actions/Destination.h"

#include "model/PathText.h"

namespace brimwick {

tl::expected<std::string, std::error_code>
takeFreeName(const Destination& destination,
             const std::function<std::error_code(const std::string&)>& attempt) {
    std::string path = destination.path;
    for (;;) {
        const std::string name = lastPathComponent(path);
        std::error_code error;
        if (destination.reserve) error = destination.reserve(name);
        if (!error) {
            error = attempt(name);
            if (!error) return path;
            if (destination.withdraw) destination.withdraw(name);
        }
        if (error != std::errc::file_exists || !destination.nextPath) return tl::unexpected(error);
        path = destination.nextPath();
    }
}

} // namespace brimwick
