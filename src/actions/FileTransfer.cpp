#include "actions/FileTransfer.h"

#include "actions/MoveItem.h"
#include "actions/OpenFolders.h"
#include "model/PathText.h"

namespace brimwick {

tl::expected<std::string, FileError> FileTransfer::move(Item item) const {
    const auto prepared = prepare(std::move(item));
    if (!prepared) return tl::unexpected(prepared.error());
    auto path = moveItem(prepared->source, prepared->destination, context_);
    if (path) leave(prepared->source);
    return path;
}

tl::expected<std::unique_ptr<CopyBatch>, FileError> FileTransfer::planCopies(std::vector<Item> items,
                                                                             bool isMove) const {
    std::vector<PlannedTransfer> planned;
    for (Item& item : items) {
        auto prepared = prepare(std::move(item));
        if (!prepared) return tl::unexpected(prepared.error());
        planned.push_back(std::move(*prepared));
    }
    return CopyBatch::plan(std::move(planned), isMove, context_);
}

CopyBatch::Results FileTransfer::finishCopies(CopyBatch& batch) const {
    auto paths = batch.finish();
    for (std::size_t i = 0; batch.isMove() && i < paths.size(); ++i)
        if (paths[i]) leave(batch.planned()[i].source);
    return paths;
}

/// Strikes an item off that was moved away.
void FileTransfer::leave(const std::string& source) const {
    if (isDesktopTrash(parentPath(source))) trash_.removeRecord(lastPathComponent(source));
}

tl::expected<std::string, FileError> FileTransfer::moveToTrash(const std::string& source,
                                                               const std::string& name) const {
    const std::string destination = joinPath(trash_.path(), name);
    auto path = move({source, destination, nullptr, 0});
    if (!path && path.error().code == std::errc::file_exists)
        return tl::unexpected(
            fileError("The Trash already holds an item of this name,", destination, path.error().code));
    return path;
}

bool FileTransfer::isDesktopTrash(const std::string& folder) const {
    const auto [known, isNew] = isTrash_.try_emplace(folder, false);
    if (isNew) known->second = trash_.isDesktopTrash(folder);
    return known->second;
}

tl::expected<PlannedTransfer, FileError> FileTransfer::prepare(Item item) const {
    const std::string folder = parentPath(item.destination);
    if (folder == trash_.path()) {
        if (auto ready = trash_.makeReady(); !ready) return tl::unexpected(ready.error());
    }
    Destination prepared{std::move(item.destination), std::move(item.nextPath), {}, {}};
    if (isDesktopTrash(folder)) {
        prepared.reserve = [this, source = item.source](const std::string& name) {
            return trash_.addRecord(name, source);
        };
        prepared.withdraw = [this](const std::string& name) { trash_.removeRecord(name); };
    }
    return PlannedTransfer{std::move(item.source), std::move(prepared), item.size};
}

} // namespace brimwick
