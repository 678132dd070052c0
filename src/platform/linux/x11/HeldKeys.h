#pragma once

#include "platform/linux/x11/KeyboardModifiers.h"
#include "platform/linux/x11/XcbEventSource.h"

#include <QTimer>

namespace brimwick {

/// Keeps keys that are held down from typing into the window that gets the focus next, by having the whole
/// keyboard until they are up. Main thread only.
class HeldKeys {
  public:
    /// Nothing but the withholding may use the connection's events. It must outlive this object.
    explicit HeldKeys(XcbConnection& connection);

    /// Takes the keyboard when a key that is no modifier is down, and gives it back by itself. Does nothing
    /// when no such key is down or when another program has the keyboard.
    void withhold();

  private:
    KeySet heldNow() const;
    void giveBackOnceUp();

    XcbConnection& connection_;
    /// What is awaited to go up; while there is any, the keyboard is ours.
    KeySet awaited_;
    QTimer recheck_;
    XcbEventSource events_;
};

} // namespace brimwick
