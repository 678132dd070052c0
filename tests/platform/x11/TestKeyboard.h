#pragma once

#include "platform/linux/x11/XcbConnection.h"

#include <QProcess>

#include <xcb/xtest.h>

#include <set>

namespace brimwick {

namespace TestKey {
inline constexpr xcb_keycode_t returnKey = 36;
inline constexpr xcb_keycode_t controlLeft = 37;
inline constexpr xcb_keycode_t a = 38;
inline constexpr xcb_keycode_t f = 41;
inline constexpr xcb_keycode_t shiftLeft = 50;
inline constexpr xcb_keycode_t m = 58;
inline constexpr xcb_keycode_t altLeft = 64;
inline constexpr xcb_keycode_t capsLock = 66;
inline constexpr xcb_keycode_t numLock = 77;
inline constexpr xcb_keycode_t superLeft = 133;
} // namespace TestKey

/// Another program at the same X server, with a keyboard: presses keys, and grabs what it is told to.
class TestKeyboard {
  public:
    TestKeyboard() : connection_(XcbConnection::connect()) {
        // Held keys repeat soon and fast.
        run("xset", {"r", "rate", "60", "50"});
    }
    TestKeyboard(const TestKeyboard&) = delete;
    TestKeyboard& operator=(const TestKeyboard&) = delete;
    ~TestKeyboard() {
        while (!down_.empty()) release(*down_.begin());
        while (!locked_.empty()) toggleLock(*locked_.begin());
    }

    XcbConnection& connection() { return *connection_; }
    void press(xcb_keycode_t key) {
        fake(XCB_KEY_PRESS, key);
        down_.insert(key);
    }
    void release(xcb_keycode_t key) {
        fake(XCB_KEY_RELEASE, key);
        down_.erase(key);
    }
    void tap(xcb_keycode_t key) {
        press(key);
        release(key);
    }
    /// Locks are undone at the end.
    void toggleLock(xcb_keycode_t key) {
        tap(key);
        if (locked_.erase(key) == 0) locked_.insert(key);
    }
    void click(std::int16_t x, std::int16_t y) {
        xcb_test_fake_input(connection_->get(), XCB_MOTION_NOTIFY, 0, 0, connection_->root(), x, y, 0);
        fake(XCB_BUTTON_PRESS, 1);
        fake(XCB_BUTTON_RELEASE, 1);
    }

    bool grabKey(xcb_keycode_t key, unsigned modifiers) {
        const XcbOwned<xcb_generic_error_t> error(xcb_request_check(
            connection_->get(), xcb_grab_key_checked(connection_->get(), 1, connection_->root(),
                                                     static_cast<std::uint16_t>(modifiers), key,
                                                     XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC)));
        return !error;
    }
    void ungrabKey(xcb_keycode_t key, unsigned modifiers) {
        xcb_ungrab_key(connection_->get(), key, connection_->root(), static_cast<std::uint16_t>(modifiers));
        connection_->synchronise();
    }
    /// Whether nobody else has the combination; it is free again afterwards.
    bool canGrabKey(xcb_keycode_t key, unsigned modifiers) {
        if (!grabKey(key, modifiers)) return false;
        ungrabKey(key, modifiers);
        return true;
    }
    /// Whether nobody else has the whole keyboard.
    bool canGrabKeyboard() {
        const auto cookie = xcb_grab_keyboard(connection_->get(), 1, connection_->root(), XCB_CURRENT_TIME,
                                              XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
        const XcbOwned<xcb_grab_keyboard_reply_t> reply(
            xcb_grab_keyboard_reply(connection_->get(), cookie, nullptr));
        if (!reply || reply->status != XCB_GRAB_STATUS_SUCCESS) return false;
        xcb_ungrab_keyboard(connection_->get(), XCB_CURRENT_TIME);
        connection_->synchronise();
        return true;
    }

    /// Runs a keyboard tool to its end.
    static bool run(const QString& program, const QStringList& arguments) {
        return QProcess::execute(program, arguments) == 0;
    }

  private:
    void fake(std::uint8_t type, std::uint8_t detail) {
        xcb_test_fake_input(connection_->get(), type, detail, XCB_CURRENT_TIME, connection_->root(), 0, 0, 0);
        connection_->synchronise();
    }

    std::unique_ptr<XcbConnection> connection_;
    std::set<xcb_keycode_t> down_;
    std::set<xcb_keycode_t> locked_;
};

} // namespace brimwick
