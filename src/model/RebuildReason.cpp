#include "model/RebuildReason.h"

#include <array>

namespace brimwick {

const RebuildReason* rebuildReason(RebuildReasonCode code) {
    static constexpr std::array<RebuildReason, 3> reasons = {{
        {"NotificationPopupOnInitializeIndex", "NotificationAnimateOnInitializeIndex",
         "Brimwick - Initializing Index", "NotificationSoundOnInitializeIndex"},
        {"NotificationPopupOnRebuildIndexForPreference", "NotificationAnimateOnRebuildIndexForPreference",
         "Brimwick - Rebuilding Index Because an Indexed Folder Changed",
         "NotificationSoundOnRebuildIndexForPreference"},
        {"NotificationPopupOnRebuildIndexForSubfolder", "NotificationAnimateOnRebuildIndexForSubfolder",
         "Brimwick - Rebuilding Index Because a Subfolder of an Indexed Folder Changed",
         "NotificationSoundOnRebuildIndexForSubfolder"},
    }};
    const auto position = static_cast<std::size_t>(code);
    return position < reasons.size() ? &reasons[position] : nullptr;
}

const char* rebuildCompletionMessage(RebuildReasonCode code) {
    return code == rebuildReasonFirstIndex ? "Index initialization complete." : "Index rebuilding complete.";
}

} // namespace brimwick
