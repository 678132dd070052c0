#include "actions/FileError.h"

namespace brimwick {

FileError fileError(std::string_view whatHappened, const std::string& path, std::error_code reason) {
    return {std::string(whatHappened) + " \"" + path + "\": " + reason.message(), reason};
}

FileError fileError(std::string_view whatHappened, const std::string& source, const std::string& destination,
                    std::error_code reason) {
    return fileError(whatHappened, source + "\" to \"" + destination, reason);
}

} // namespace brimwick
