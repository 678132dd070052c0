#include "actions/CopyItem.h"

#include "actions/JournalEntry.h"
#include "actions/OpenFolders.h"
#include "actions/StagedCopy.h"
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

tl::expected<std::string, FileError> copyItem(const std::string& source, const Destination& destination,
                                              const TransferContext& context) {
    const auto from = context.folders.openPlace(source);
    if (!from) return tl::unexpected(from.error());
    const auto to = context.folders.openPlace(destination.path);
    if (!to) return tl::unexpected(to.error());
    if (auto status = statusUnlessInsideItself("copy", *from, to->folder); !status)
        return tl::unexpected(status.error());

    JournalEntry notes(context.journal, *from, false);
    auto staged = StagedCopy::make(*from, to->folder, notes, context.progress);
    if (!staged) return tl::unexpected(staged.error());
    auto path =
        takeFreeName(destination, [&staged](const std::string& name) { return staged->rename(name); });
    if (!path) return tl::unexpected(fileError("Could not copy", source, destination.path, path.error()));
    if (auto error = to->folder.sync())
        return tl::unexpected(fileError("Copied, but a power cut may undo it,", source, *path, error));
    return *path;
}

} // namespace brimwick
