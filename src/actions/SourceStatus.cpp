#include "actions/SourceStatus.h"

#include "actions/SystemError.h"

#include <fcntl.h>
#include <sys/stat.h>

namespace brimwick {

tl::expected<struct stat, FileError>
statusUnlessInsideItself(const std::string& verb, const ItemPlace& source, const OpenFolder& target) {
    struct stat status {};
    if (fstatat(source.folder.descriptor(), source.name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0)
        return tl::unexpected(fileError("Could not " + verb, source.path(), lastSystemError()));
    if (!S_ISDIR(status.st_mode)) return status;
    const auto inside = target.isAtOrBelow(status.st_dev, status.st_ino);
    if (!inside)
        return tl::unexpected(fileError("Could not " + verb, source.path(), target.path(), inside.error()));
    if (!*inside) return status;
    return tl::unexpected(fileError("Could not " + verb + " a folder into itself,", source.path(),
                                    target.path(), std::make_error_code(std::errc::invalid_argument)));
}

} // namespace brimwick
