#include "platform/linux/x11/X11WindowSystem.h"

#include <QApplication>
#include <QWidget>
#include <QWindow>

namespace brimwick {

namespace {

constexpr std::uint8_t bitsPerItem = 32;
/// The request comes straight from the user, as a pager's does; by it every window manager gives the focus.
constexpr std::uint32_t directUserAction = 2;

/// Where the window manager looks for a window's user time: another window, where the framework made one.
xcb_window_t userTimeWindow(xcb_connection_t* server, xcb_window_t window, xcb_atom_t property) {
    const XcbOwned<xcb_get_property_reply_t> reply(xcb_get_property_reply(
        server, xcb_get_property(server, 0, window, property, XCB_ATOM_WINDOW, 0, 1), nullptr));
    if (!reply || reply->value_len != 1) return window;
    return *static_cast<const xcb_window_t*>(xcb_get_property_value(reply.get()));
}

/// A window that is hidden and shown again within a tenth of a second keeps the framework's keyboard focus
/// all the while, and so would never be told that it is active again.
void reactivateQuicklyReshown(WindowNumber window) {
    QWidget* widget = QWidget::find(static_cast<WId>(window));
    if (widget == nullptr || QGuiApplication::focusWindow() == nullptr) return;
    if (QGuiApplication::focusWindow() == widget->windowHandle() && !widget->isActiveWindow())
        QApplication::setActiveWindow(widget);
}

} // namespace

std::unique_ptr<X11WindowSystem> X11WindowSystem::create(UserTime& userTime) {
    const auto* application = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (application == nullptr) return nullptr;
    auto connection = XcbConnection::connect();
    if (!connection) return nullptr;
    return std::unique_ptr<X11WindowSystem>(
        new X11WindowSystem(userTime, application->connection(), std::move(connection)));
}

X11WindowSystem::X11WindowSystem(UserTime& userTime, xcb_connection_t* windowsConnection,
                                 std::unique_ptr<XcbConnection> connection)
    : userTime_(userTime), windowsConnection_(windowsConnection), connection_(std::move(connection)),
      userTimeFilter_(userTime, *connection_), heldKeys_(*connection_) {}

void X11WindowSystem::prepareToShow(WindowNumber window) {
    const xcb_timestamp_t time = userTime_.latest();
    // A user time of zero would say that the window does not want the focus.
    if (time == XCB_CURRENT_TIME) return;
    const xcb_window_t target = userTimeWindow(windowsConnection_, static_cast<xcb_window_t>(window),
                                               connection_->atom("_NET_WM_USER_TIME_WINDOW"));
    xcb_change_property(windowsConnection_, XCB_PROP_MODE_REPLACE, target,
                        connection_->atom("_NET_WM_USER_TIME"), XCB_ATOM_CARDINAL, bitsPerItem, 1, &time);
    xcb_flush(windowsConnection_);
}

void X11WindowSystem::makeKeyAndOrderFront(WindowNumber window) {
    // Showing a window overwrites the stamp with the last time that the framework saw, older than a hot key.
    prepareToShow(window);
    xcb_client_message_event_t request{};
    request.response_type = XCB_CLIENT_MESSAGE;
    request.format = bitsPerItem;
    request.window = static_cast<xcb_window_t>(window);
    request.type = connection_->atom("_NET_ACTIVE_WINDOW");
    request.data.data32[0] = directUserAction;
    request.data.data32[1] = userTime_.latest();
    xcb_send_event(windowsConnection_, 0, connection_->root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char*>(&request));
    xcb_flush(windowsConnection_);
    reactivateQuicklyReshown(window);
}

void X11WindowSystem::withholdHeldKeys() {
    // A menu of ours that is just closing may not have given the keyboard back yet.
    const XcbOwned<xcb_get_input_focus_reply_t> handled(
        xcb_get_input_focus_reply(windowsConnection_, xcb_get_input_focus(windowsConnection_), nullptr));
    heldKeys_.withhold();
}

} // namespace brimwick
