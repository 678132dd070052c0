#include "platform/linux/x11/X11WindowSystem.h"

#include "platform/linux/x11/KeyboardFocus.h"

#include <QApplication>
#include <QWidget>
#include <QWindow>

#include <algorithm>
#include <chrono>
#include <thread>

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

/// How long a window manager has to say what frame it would put round a window.
constexpr std::chrono::milliseconds frameTime{100};

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
    auto withholding = XcbConnection::connect();
    if (!connection || !withholding) return nullptr;
    return std::unique_ptr<X11WindowSystem>(new X11WindowSystem(
        userTime, application->connection(), std::move(connection), std::move(withholding)));
}

X11WindowSystem::X11WindowSystem(UserTime& userTime, xcb_connection_t* windowsConnection,
                                 std::unique_ptr<XcbConnection> connection,
                                 std::unique_ptr<XcbConnection> withholding)
    : userTime_(userTime), windowsConnection_(windowsConnection), connection_(std::move(connection)),
      userTimeFilter_(userTime, *connection_), heldKeys_(std::move(withholding)) {}

void X11WindowSystem::sendToWindowManager(WindowNumber window, std::string_view message,
                                          std::initializer_list<std::uint32_t> data) {
    xcb_client_message_event_t request{};
    request.response_type = XCB_CLIENT_MESSAGE;
    request.format = bitsPerItem;
    request.window = static_cast<xcb_window_t>(window);
    request.type = connection_->atom(message);
    std::ranges::copy(data, std::begin(request.data.data32));
    xcb_send_event(windowsConnection_, 0, connection_->root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char*>(&request));
    xcb_flush(windowsConnection_);
}

std::optional<FrameMargins> X11WindowSystem::frameMargins(WindowNumber window) {
    const std::string_view request = "_NET_REQUEST_FRAME_EXTENTS";
    const auto supported =
        connection_->propertyItems(connection_->root(), connection_->atom("_NET_SUPPORTED"));
    if (std::ranges::find(supported, connection_->atom(request)) == supported.end()) return std::nullopt;
    sendToWindowManager(window, request, {});
    const auto deadline = std::chrono::steady_clock::now() + frameTime;
    const xcb_atom_t extents = connection_->atom("_NET_FRAME_EXTENTS");
    while (std::chrono::steady_clock::now() < deadline) {
        const auto items = connection_->propertyItems(static_cast<xcb_window_t>(window), extents);
        if (items.size() == 4)
            return FrameMargins{static_cast<int>(items[0]), static_cast<int>(items[2]),
                                static_cast<int>(items[1]), static_cast<int>(items[3])};
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return std::nullopt;
}

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
    sendToWindowManager(window, "_NET_ACTIVE_WINDOW", {directUserAction, userTime_.latest()});
    reactivateQuicklyReshown(window);
}

bool X11WindowSystem::hasKeyboardFocus(WindowNumber window) {
    return brimwick::hasKeyboardFocus(*connection_, static_cast<xcb_window_t>(window));
}

void X11WindowSystem::withholdHeldKeys() {
    // A menu of ours that is just closing may not have given the keyboard back yet.
    const XcbOwned<xcb_get_input_focus_reply_t> handled(
        xcb_get_input_focus_reply(windowsConnection_, xcb_get_input_focus(windowsConnection_), nullptr));
    heldKeys_.withhold();
}

} // namespace brimwick
