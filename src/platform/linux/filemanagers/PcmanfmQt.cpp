#include "platform/linux/filemanagers/KnownFileManagers.h"
#include "platform/linux/x11/KeySynthesis.h"

namespace brimwick {

FileManagerAdapter pcmanfmQt() {
    return {
        .name = "pcmanfm-qt",
        .windowClasses = {"pcmanfm-qt"},
        .desktopClasses = {"pcmanfm-qt"},
        .program = {.busName = "org.pcmanfm.PCManFM", .program = "pcmanfm-qt"},
        .copySelection = KeySynthesis::pressCopy,
        // Its own Copy is enabled 200 ms after the selection came about; before, the view copies a name as
        // text.
        .selectionDelay = std::chrono::milliseconds(250),
    };
}

} // namespace brimwick
