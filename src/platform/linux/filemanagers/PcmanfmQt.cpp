#include "platform/linux/filemanagers/KnownFileManagers.h"
#include "platform/linux/x11/KeySynthesis.h"

namespace brimwick {

FileManagerAdapter pcmanfmQt() {
    return {
        .name = "pcmanfm-qt",
        .windowClasses = {"pcmanfm-qt"},
        .desktopClasses = {"pcmanfm-qt"},
        .copySelection = KeySynthesis::pressCopy,
    };
}

} // namespace brimwick
