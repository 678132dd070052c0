#include "actions/FileTransfer.h"

#include "actions/CopyItem.h"
#include "actions/MoveItem.h"
#include "model/PathText.h"

namespace brimwick {

tl::expected<std::string, FileError>
FileTransfer::move(const std::string& source, const std::string& destination, NextPath nextPath) const {
    const auto prepared = prepare(source, destination, std::move(nextPath));
    if (!prepared) return tl::unexpected(prepared.error());
    const bool leavesTrash = isDesktopTrash(parentPath(source));
    auto path = moveItem(source, *prepared, context_);
    if (path && leavesTrash) trash_.removeRecord(lastPathComponent(source));
    return path;
}

tl::expected<std::string, FileError>
FileTransfer::copy(const std::string& source, const std::string& destination, NextPath nextPath) const {
    const auto prepared = prepare(source, destination, std::move(nextPath));
    if (!prepared) return tl::unexpected(prepared.error());
    return copyItem(source, *prepared, context_);
}

tl::expected<std::string, FileError> FileTransfer::moveToTrash(const std::string& source,
                                                               const std::string& name) const {
    const std::string destination = joinPath(trash_.path(), name);
    auto path = move(source, destination, nullptr);
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

tl::expected<Destination, FileError>
FileTransfer::prepare(const std::string& source, const std::string& destination, NextPath nextPath) const {
    const std::string folder = parentPath(destination);
    if (folder == trash_.path()) {
        if (auto ready = trash_.makeReady(); !ready) return tl::unexpected(ready.error());
    }
    Destination prepared{destination, std::move(nextPath), {}, {}};
    if (isDesktopTrash(folder)) {
        prepared.reserve = [this, source](const std::string& name) { return trash_.addRecord(name, source); };
        prepared.withdraw = [this](const std::string& name) { trash_.removeRecord(name); };
    }
    return prepared;
}

} // namespace brimwick
