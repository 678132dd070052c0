#pragma once

#include "actions/CopyItem.h"
#include "actions/FileJournal.h"
#include "actions/MoveItem.h"
#include "actions/OpenFolders.h"
#include "actions/TransferProgress.h"

#include <string>

namespace brimwick {

/// A transfer that nobody notes or watches.
inline tl::expected<std::string, FileError> moveItem(const std::string& source,
                                                     const Destination& destination) {
    FileJournal journal;
    TransferProgress progress;
    OpenFolders folders;
    auto path = moveItem(source, destination, {journal, progress, folders});
    if (auto durable = folders.syncChanged(); path && !durable) return tl::unexpected(durable.error());
    return path;
}

inline auto copyItem(const std::string& source, const Destination& destination) {
    FileJournal journal;
    TransferProgress progress;
    OpenFolders folders;
    return copyItem(source, destination, {journal, progress, folders});
}

} // namespace brimwick
