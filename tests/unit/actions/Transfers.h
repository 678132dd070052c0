#pragma once

#include "actions/CopyBatch.h"
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

inline tl::expected<std::string, FileError> copyItem(const std::string& source,
                                                     const Destination& destination) {
    FileJournal journal;
    TransferProgress progress;
    OpenFolders folders;
    return transferByCopy({source, destination, 0}, false, {journal, progress, folders});
}

} // namespace brimwick
