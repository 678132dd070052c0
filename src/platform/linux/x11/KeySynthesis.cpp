#include "platform/linux/x11/KeySynthesis.h"

#include "platform/linux/x11/KeyboardFocus.h"
#include "platform/linux/x11/KeyboardKeys.h"

#include <xcb/xtest.h>

#include <chrono>
#include <thread>

namespace brimwick {

namespace {

void sendKey(xcb_connection_t* connection, std::uint8_t type, xcb_keycode_t key) {
    xcb_test_fake_input(connection, type, key, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
}

/// While it lives no other client's requests are handled, so that what was checked stays so.
class ServerGrab {
  public:
    explicit ServerGrab(xcb_connection_t* connection) : connection_(connection) {
        xcb_grab_server(connection_);
    }
    ServerGrab(const ServerGrab&) = delete;
    ServerGrab& operator=(const ServerGrab&) = delete;
    ~ServerGrab() {
        xcb_ungrab_server(connection_);
        xcb_flush(connection_);
    }

  private:
    xcb_connection_t* connection_;
};

/// Keys go to whoever holds the keyboard, whichever window is in front.
bool keyboardIsFree(XcbConnection& connection) {
    xcb_connection_t* raw = connection.get();
    const auto cookie = xcb_grab_keyboard(raw, 1, connection.root(), XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC,
                                          XCB_GRAB_MODE_ASYNC);
    const XcbOwned<xcb_grab_keyboard_reply_t> reply(xcb_grab_keyboard_reply(raw, cookie, nullptr));
    xcb_ungrab_keyboard(raw, XCB_CURRENT_TIME);
    return reply && reply->status == XCB_GRAB_STATUS_SUCCESS;
}

bool tryToPressCopy(XcbConnection& connection, xcb_window_t window, xcb_keycode_t control, xcb_keycode_t c) {
    xcb_connection_t* raw = connection.get();
    const ServerGrab onlyUs(raw);
    if (!hasKeyboardFocus(connection, window)) return false;
    // Programs take Ctrl+C with more modifiers for another command.
    for (const xcb_keycode_t key : KeyboardKeys::heldModifiers(connection))
        sendKey(raw, XCB_KEY_RELEASE, key);
    if (!keyboardIsFree(connection)) return false;
    sendKey(raw, XCB_KEY_PRESS, control);
    sendKey(raw, XCB_KEY_PRESS, c);
    sendKey(raw, XCB_KEY_RELEASE, c);
    sendKey(raw, XCB_KEY_RELEASE, control);
    connection.synchronise();
    return true;
}

} // namespace

bool KeySynthesis::isPossible(XcbConnection& connection) {
    const xcb_query_extension_reply_t* test = xcb_get_extension_data(connection.get(), &xcb_test_id);
    return test != nullptr && test->present != 0;
}

bool KeySynthesis::pressCopy(XcbConnection& connection, xcb_window_t window) {
    // A hot key's own grab ends with its release, and a focus just given may still be on its way.
    constexpr std::chrono::milliseconds patience{200};
    constexpr std::chrono::milliseconds pause{5};
    if (!isPossible(connection)) return false;
    const xcb_keycode_t control = KeyboardKeys::controlKey(connection);
    const xcb_keycode_t c = KeyboardKeys::keyOfLetterC(connection);
    const auto end = std::chrono::steady_clock::now() + patience;
    for (;;) {
        if (tryToPressCopy(connection, window, control, c)) return true;
        if (connection.isBroken() || std::chrono::steady_clock::now() >= end) return false;
        std::this_thread::sleep_for(pause);
    }
}

} // namespace brimwick
