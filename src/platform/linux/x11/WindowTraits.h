#pragma once

#include "platform/linux/x11/XcbConnection.h"

namespace brimwick {

enum class WindowType { normal, desktop, other };

/// What tells one program's window from another's.
struct WindowTraits {
    xcb_window_t window = XCB_NONE;
    /// The class part of WM_CLASS; empty when the window has none, or is gone.
    std::string windowClass;
    WindowType type = WindowType::other;
    /// 0 when the window does not say.
    std::uint32_t processId = 0;
};

/// Of a window that is gone: type `other` and no class.
WindowTraits traitsOf(XcbConnection& connection, xcb_window_t window);

/// Whether the window can be seen on the workspace in use: neither minimised nor on another workspace.
bool isShown(XcbConnection& connection, xcb_window_t window);

} // namespace brimwick
