#pragma once

#include "platform/linux/x11/HeldKeys.h"
#include "platform/linux/x11/KeysInOrder.h"
#include "platform/linux/x11/UserTimeFilter.h"
#include "platform/ports/WindowSystem.h"

#include <initializer_list>
#include <string_view>

namespace brimwick {

/// Focus and held keys as the window managers of X11 want them asked for.
class X11WindowSystem : public WindowSystem {
  public:
    /// To be made after the application object. Nothing when that is not on an X server. `userTime` must
    /// outlive the result; it learns of the user's keys and clicks in our own windows.
    static std::unique_ptr<X11WindowSystem> create(UserTime& userTime);

    std::optional<FrameMargins> frameMargins(WindowNumber window) override;
    void prepareToShow(WindowNumber window) override;
    void makeKeyAndOrderFront(WindowNumber window) override;
    bool hasKeyboardFocus(WindowNumber window) override;
    void withholdHeldKeys() override;
    /// As `HeldKeys` says.
    void setChordMissedHandler(HeldKeys::ChordMissed handler) {
        heldKeys_.setChordMissedHandler(std::move(handler));
    }

  private:
    /// In the order of what was asked for the window before.
    void sendToWindowManager(WindowNumber window, std::string_view message,
                             std::initializer_list<std::uint32_t> data);

    X11WindowSystem(UserTime& userTime, xcb_connection_t* windowsConnection,
                    std::unique_ptr<XcbConnection> connection, std::unique_ptr<XcbConnection> withholding);

    UserTime& userTime_;
    /// The connection that our windows live on: what is asked for a window keeps its place after the window's
    /// own requests.
    xcb_connection_t* windowsConnection_;
    std::unique_ptr<XcbConnection> connection_;
    UserTimeFilter userTimeFilter_;
    KeysInOrder keysInOrder_;
    HeldKeys heldKeys_;
};

} // namespace brimwick
