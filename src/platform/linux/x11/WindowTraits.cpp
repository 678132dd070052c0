#include "platform/linux/x11/WindowTraits.h"

#include <algorithm>

namespace brimwick {

namespace {

constexpr std::uint32_t everyWorkspace = 0xffffffff;

std::string classPart(const std::string& instanceAndClass) {
    const std::size_t end = instanceAndClass.find('\0');
    if (end == std::string::npos) return instanceAndClass;
    return instanceAndClass.substr(end + 1, instanceAndClass.find('\0', end + 1) - end - 1);
}

bool isAlive(XcbConnection& connection, xcb_window_t window) {
    const XcbOwned<xcb_get_window_attributes_reply_t> reply(xcb_get_window_attributes_reply(
        connection.get(), xcb_get_window_attributes(connection.get(), window), nullptr));
    return reply != nullptr;
}

WindowType typeOf(XcbConnection& connection, xcb_window_t window) {
    const auto types = connection.propertyItems(window, connection.atom("_NET_WM_WINDOW_TYPE"));
    // Without a type, a window that belongs to another one is a dialog.
    if (types.empty()) {
        const bool belongsToAnother = !connection.propertyItems(window, XCB_ATOM_WM_TRANSIENT_FOR).empty();
        return belongsToAnother || !isAlive(connection, window) ? WindowType::other : WindowType::normal;
    }
    for (const std::uint32_t type : types) {
        if (type == connection.atom("_NET_WM_WINDOW_TYPE_NORMAL")) return WindowType::normal;
        if (type == connection.atom("_NET_WM_WINDOW_TYPE_DESKTOP")) return WindowType::desktop;
        // Toolkits put types of their own before the standard one.
        if (connection.atomName(type).starts_with("_NET_WM_WINDOW_TYPE_")) return WindowType::other;
    }
    return WindowType::other;
}

} // namespace

WindowTraits traitsOf(XcbConnection& connection, xcb_window_t window) {
    WindowTraits traits{window, classPart(connection.propertyBytes(window, XCB_ATOM_WM_CLASS)),
                        typeOf(connection, window)};
    const auto process = connection.propertyItems(window, connection.atom("_NET_WM_PID"));
    if (!process.empty()) traits.processId = process.front();
    return traits;
}

bool isShown(XcbConnection& connection, xcb_window_t window) {
    const XcbOwned<xcb_get_window_attributes_reply_t> reply(xcb_get_window_attributes_reply(
        connection.get(), xcb_get_window_attributes(connection.get(), window), nullptr));
    if (!reply || reply->map_state != XCB_MAP_STATE_VIEWABLE) return false;
    const auto hidden = connection.propertyItems(window, connection.atom("_NET_WM_STATE"));
    if (std::ranges::find(hidden, connection.atom("_NET_WM_STATE_HIDDEN")) != hidden.end()) return false;
    const auto workspace = connection.propertyItems(window, connection.atom("_NET_WM_DESKTOP"));
    const auto inUse = connection.propertyItems(connection.root(), connection.atom("_NET_CURRENT_DESKTOP"));
    return workspace.empty() || inUse.empty() || workspace.front() == everyWorkspace ||
           workspace.front() == inUse.front();
}

} // namespace brimwick
