#pragma once

#include "platform/linux/x11/XcbConnection.h"

#include <algorithm>
#include <optional>
#include <vector>

namespace brimwick {

/// A window of another program, which counts the keys that it is sent.
class TestWindow {
  public:
    /// A window that the window manager manages, or one that it is told to leave alone.
    explicit TestWindow(bool managed = false) : connection_(XcbConnection::connect()) {
        xcb_connection_t* server = connection_->get();
        window_ = xcb_generate_id(server);
        const std::uint32_t values[] = {managed ? 0U : 1U, XCB_EVENT_MASK_KEY_PRESS |
                                                               XCB_EVENT_MASK_EXPOSURE |
                                                               XCB_EVENT_MASK_PROPERTY_CHANGE};
        xcb_create_window(server, XCB_COPY_FROM_PARENT, window_, connection_->root(), 100, 100, 300, 200, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                          XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values);
        map();
    }

    xcb_window_t id() const { return window_; }
    void takeFocus() {
        xcb_set_input_focus(connection_->get(), XCB_INPUT_FOCUS_PARENT, window_, XCB_CURRENT_TIME);
        connection_->synchronise();
    }
    /// Asks to be shown; a window manager that is just starting may overhear it.
    void map() {
        xcb_map_window(connection_->get(), window_);
        connection_->synchronise();
    }
    bool isManaged() { return !connection_->propertyItems(window_, connection_->atom("WM_STATE")).empty(); }
    bool isActive() {
        const auto active =
            connection_->propertyItems(connection_->root(), connection_->atom("_NET_ACTIVE_WINDOW"));
        return std::ranges::find(active, window_) != active.end();
    }
    /// How often the key has been pressed, or repeated, in this window.
    std::ptrdiff_t presses(xcb_keycode_t key) {
        collect();
        return std::ranges::count(keys_, key);
    }
    std::ptrdiff_t presses() {
        collect();
        return std::ssize(keys_);
    }
    /// The server's clock.
    xcb_timestamp_t serverTime() {
        xcb_change_property(connection_->get(), XCB_PROP_MODE_REPLACE, window_,
                            connection_->atom("BRIMWICK_TEST"), XCB_ATOM_CARDINAL, 32, 0, nullptr);
        clock_.reset();
        while (!clock_) collect();
        return *clock_;
    }
    void setUserTime(xcb_timestamp_t time) {
        xcb_change_property(connection_->get(), XCB_PROP_MODE_REPLACE, window_,
                            connection_->atom("_NET_WM_USER_TIME"), XCB_ATOM_CARDINAL, 32, 1, &time);
        connection_->synchronise();
    }

  private:
    void collect() {
        connection_->synchronise();
        while (const XcbOwned<xcb_generic_event_t> event{xcb_poll_for_event(connection_->get())}) {
            if (event->response_type == XCB_KEY_PRESS)
                keys_.push_back(reinterpret_cast<const xcb_key_press_event_t&>(*event).detail);
            if (event->response_type == XCB_PROPERTY_NOTIFY) {
                const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(*event);
                if (change.atom == connection_->atom("BRIMWICK_TEST")) clock_ = change.time;
            }
        }
    }

    std::unique_ptr<XcbConnection> connection_;
    xcb_window_t window_ = XCB_NONE;
    std::optional<xcb_timestamp_t> clock_;
    std::vector<xcb_keycode_t> keys_;
};

} // namespace brimwick
