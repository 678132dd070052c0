#include "actions/MoveItem.h"

#include "actions/CopyBatch.h"
#include "actions/OpenFolders.h"
#include "actions/RenameWithoutReplacing.h"
#include "actions/SourceStatus.h"
#include "actions/TransferProgress.h"

#include <optional>

namespace brimwick {

namespace {

struct Places {
    ItemPlace from;
    ItemPlace to;
};

tl::expected<Places, FileError> openPlaces(const std::string& source, const Destination& destination,
                                           OpenFolders& folders) {
    auto from = folders.openPlace(source);
    if (!from) return tl::unexpected(from.error());
    auto to = folders.openPlace(destination.path);
    if (!to) return tl::unexpected(to.error());
    return Places{std::move(*from), std::move(*to)};
}

class Renaming {
  public:
    Renaming(const Places& places, const Destination& destination)
        : from_(places.from), to_(places.to.folder), destination_(destination) {}

    /// The path that the item got.
    tl::expected<std::string, FileError> run() {
        auto path = takeFreeName(destination_, [this](const std::string& name) { return attempt(name); });
        if (path) return std::move(*path);
        if (refusal_) return tl::unexpected(std::move(*refusal_));
        return tl::unexpected(fileError("Could not move", from_.path(), destination_.path, path.error()));
    }

  private:
    std::error_code attempt(const std::string& name) {
        // Most renames succeed, and need no look at the item.
        if (to_.mark().isLocal()) {
            const std::error_code answer =
                tryRename(from_.folder.descriptor(), from_.name, to_.descriptor(), name);
            if (!answer || answer == std::errc::file_exists || answer == std::errc::cross_device_link)
                return answer;
        }
        const auto status = statusUnlessInsideItself("move", from_, to_);
        if (status)
            return renameWithoutReplacing(*status, from_.folder.descriptor(), from_.name, to_.descriptor(),
                                          name);
        refusal_ = status.error();
        return refusal_->code;
    }

    const ItemPlace& from_;
    const OpenFolder& to_;
    const Destination& destination_;
    std::optional<FileError> refusal_;
};

} // namespace

tl::expected<std::string, FileError> moveItem(const std::string& source, const Destination& destination,
                                              const TransferContext& context) {
    if (auto cancelled = context.progress.checkCancelled())
        return tl::unexpected(fileError("Could not move", source, destination.path, cancelled));
    auto places = openPlaces(source, destination, context.folders);
    if (!places) return tl::unexpected(places.error());
    auto path = Renaming(*places, destination).run();
    if (!path && path.error().code == std::errc::no_such_file_or_directory) {
        // A folder that was held open may be gone, and another one be in its place.
        context.folders.lookAnew();
        places = openPlaces(source, destination, context.folders);
        if (!places) return tl::unexpected(places.error());
        path = Renaming(*places, destination).run();
    }
    // The kernel knows best what lies on the same file system.
    if (!path && path.error().code == std::errc::cross_device_link) {
        context.folders.noteCrossing(places->from.folder.path(), places->to.folder.path());
        return transferByCopy({source, destination, 0}, true, context);
    }
    if (!path) return path;
    context.folders.forget(source);
    context.folders.noteChange(places->to.folder);
    context.folders.noteChange(places->from.folder);
    return path;
}

} // namespace brimwick
