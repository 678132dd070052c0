#include "platform/linux/x11/KeyboardFocus.h"

namespace brimwick {

namespace {

xcb_window_t parentOf(const XcbConnection& connection, xcb_window_t window) {
    const XcbOwned<xcb_query_tree_reply_t> reply(
        xcb_query_tree_reply(connection.get(), xcb_query_tree(connection.get(), window), nullptr));
    return reply ? reply->parent : xcb_window_t{XCB_NONE};
}

} // namespace

bool hasKeyboardFocus(XcbConnection& connection, xcb_window_t window) {
    const auto active = connection.propertyItems(connection.root(), connection.atom("_NET_ACTIVE_WINDOW"));
    if (active.empty() || active.front() != window) return false;
    const XcbOwned<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(connection.get(), xcb_get_input_focus(connection.get()), nullptr));
    if (!reply || reply->focus == XCB_NONE || reply->focus == XCB_INPUT_FOCUS_POINTER_ROOT) return false;
    // Toolkits give the focus to the window itself or to a child of it.
    xcb_window_t focus = reply->focus;
    while (focus != XCB_NONE && focus != window) focus = parentOf(connection, focus);
    return focus == window;
}

} // namespace brimwick
