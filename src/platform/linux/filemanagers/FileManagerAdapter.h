#pragma once

#include "platform/linux/dbus/FolderOpener.h"
#include "platform/linux/x11/WindowTraits.h"

#include <chrono>
#include <string_view>
#include <vector>

namespace brimwick {

/// What there is to know about one file manager.
struct FileManagerAdapter {
    std::string_view name;
    /// The class part of WM_CLASS of its windows, and of the desktop that it draws.
    std::vector<std::string_view> windowClasses;
    std::vector<std::string_view> desktopClasses;
    /// How it is told to show a folder.
    FileManagerProgram program;
    /// Makes the window copy its selection to the clipboard. False when it was not asked to. Runs on the
    /// clipboard keeper's thread and connection.
    bool (*copySelection)(XcbConnection& connection, xcb_window_t window) = nullptr;
    /// For this long after the user changed the selection the program may copy something else in its place.
    std::chrono::milliseconds selectionDelay{0};

    bool owns(const WindowTraits& window) const;
};

} // namespace brimwick
