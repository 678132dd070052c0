#include "actions/MoveItem.h"

#include "actions/OpenFolders.h"
#include "actions/RenameWithoutReplacing.h"
#include "actions/SourceStatus.h"
#include "actions/TransferByCopy.h"
#include "actions/TransferProgress.h"

namespace brimwick {

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
    if (!path && path.error() == std::errc::cross_device_link) {
        context.folders.noteCrossing(from->folder.path(), to->folder.path());
        return transferByCopy({{source, destination, 0}}, true, context).front();
    }
    if (!path) return tl::unexpected(fileError("Could not move", source, destination.path, path.error()));

    context.folders.noteChange(to->folder);
    context.folders.noteChange(from->folder);
    return *path;
}

} // namespace brimwick
