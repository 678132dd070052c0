#pragma once

#include "platform/linux/x11/EventPump.h"
#include "platform/linux/x11/WindowTraits.h"
#include "platform/linux/x11/XcbEventSource.h"

#include <optional>

namespace brimwick {

/// Knows which window the user works in, our own left out of account, and puts other windows in front. Only
/// ordinary windows and desktops count; dialogs, panels and menus do not. Main thread, with an event loop.
class FrontWindow {
  public:
    /// Hears of every window of another program that becomes the active one.
    using ForeignActivated = std::function<void(const WindowTraits&)>;

    static constexpr std::chrono::milliseconds activationTime{500};

    FrontWindow(std::unique_ptr<XcbConnection> connection, ForeignActivated foreignActivated);

    XcbConnection& connection() { return *connection_; }
    /// Whether a window manager runs that says which window is active.
    bool canTell();

    /// Remembers the window that is in front at this moment, when a hot key went down, as the answer to the
    /// next `inFront`.
    void capture();
    /// Drops what was captured, when the request that it was for is done.
    void forgetCapture() { captured_.reset(); }
    /// The window that the user's request is about: the captured one, else the active one, or where that is
    /// ours the last one before. Nothing is the bare desktop.
    std::optional<WindowTraits> inFront();

    /// The active window, ours or not; nothing when there is none.
    std::optional<xcb_window_t> active();
    /// All windows that the window manager keeps, topmost first.
    std::vector<WindowTraits> stacking();

    /// Takes in what has happened up to now.
    void drain() { pump_.drain(); }
    /// Asks for the window to be activated, and returns at once.
    void requestActivation(xcb_window_t window);
    /// Waits until what was asked for has the keyboard focus, within `activationTime` of the asking.
    void settle();

  private:
    void handle(const xcb_generic_event_t& event);
    void noteActive();
    bool isForeign(const WindowTraits& traits) const;
    std::optional<WindowTraits> presentFront();

    struct PendingActivation {
        xcb_window_t window = XCB_NONE;
        Deadline deadline;
    };

    std::unique_ptr<XcbConnection> connection_;
    ForeignActivated foreignActivated_;
    EventPump pump_;
    XcbEventSource events_;
    std::optional<xcb_window_t> lastActive_;
    /// Where it is not known, the topmost window stands in for it.
    std::optional<WindowTraits> lastForeign_;
    std::optional<std::optional<WindowTraits>> captured_;
    std::optional<PendingActivation> pending_;
};

} // namespace brimwick
