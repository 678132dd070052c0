#include "platform/linux/filemanagers/FileManagerAdapter.h"

#include <algorithm>

namespace brimwick {

bool FileManagerAdapter::owns(const WindowTraits& window) const {
    switch (window.type) {
    case WindowType::normal:
        return std::ranges::find(windowClasses, window.windowClass) != windowClasses.end();
    case WindowType::desktop:
        return std::ranges::find(desktopClasses, window.windowClass) != desktopClasses.end();
    case WindowType::other:
        return false;
    }
    return false;
}

} // namespace brimwick
