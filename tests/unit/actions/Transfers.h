#pragma once

#include "actions/CopyItem.h"
#include "actions/FileJournal.h"
#include "actions/MoveItem.h"
#include "actions/TransferProgress.h"

#include <string>

namespace brimwick {

/// A transfer that nobody notes or watches.
inline auto moveItem(const std::string& source, const Destination& destination) {
    FileJournal journal;
    TransferProgress progress;
    return moveItem(source, destination, {journal, progress});
}

inline auto copyItem(const std::string& source, const Destination& destination) {
    FileJournal journal;
    TransferProgress progress;
    return copyItem(source, destination, {journal, progress});
}

} // namespace brimwick
