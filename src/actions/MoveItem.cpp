#include "actions/MoveItem.h"

#include "actions/CopyItem.h"
#include "actions/JournalEntry.h"
#include "actions/OpenFolders.h"
#include "actions/RemoveVerified.h"
#include "actions/RenameWithoutReplacing.h"
#include "actions/StagedCopy.h"
#include "actions/TransferProgress.h"

namespace brimwick {

namespace {

tl::expected<std::string, FileError> moveByCopy(const ItemPlace& from, const ItemPlace& to,
                                                const Destination& destination,
                                                const TransferContext& context) {
    if (auto error = checkRemovable(from))
        return tl::unexpected(fileError("Could not move", from.path(), destination.path, error));
    JournalEntry notes(context.journal, from, true);
    auto staged = StagedCopy::make(from, to.folder, notes, context.progress);
    if (!staged) return tl::unexpected(staged.error());
    auto path =
        takeFreeName(destination, [&staged](const std::string& name) { return staged->rename(name); });
    if (!path)
        return tl::unexpected(fileError("Could not move", from.path(), destination.path, path.error()));
    if (auto error = to.folder.sync())
        return tl::unexpected(fileError("Copied, but not removed, as a power cut may undo the copy,",
                                        from.path(), *path, error));
    if (auto removed = removeVerified(from, staged->log(), notes); !removed)
        return tl::unexpected(removed.error());
    return *path;
}

} // namespace

tl::expected<std::string, FileError> moveItem(const std::string& source, const Destination& destination,
                                              const TransferContext& context) {
    if (auto cancelled = context.progress.checkCancelled())
        return tl::unexpected(fileError("Could not move", source, destination.path, cancelled));
    const auto from = context.folders.openPlace(source);
    if (!from) return tl::unexpected(from.error());
    const auto to = context.folders.openPlace(destination.path);
    if (!to) return tl::unexpected(to.error());
    const auto status = statusUnlessInsideItself("move", *from, to->folder);
    if (!status) return tl::unexpected(status.error());

    auto path = takeFreeName(destination, [&](const std::string& name) {
        return renameWithoutReplacing(*status, from->folder.descriptor(), from->name, to->folder.descriptor(),
                                      name);
    });
    // The kernel knows best what lies on the same file system.
    if (!path && path.error() == std::errc::cross_device_link)
        return moveByCopy(*from, *to, destination, context);
    if (!path) return tl::unexpected(fileError("Could not move", source, destination.path, path.error()));

    context.folders.noteChange(to->folder);
    context.folders.noteChange(from->folder);
    return *path;
}

} // namespace brimwick
