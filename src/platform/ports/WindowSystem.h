#pragma once

#include <cstdint>
#include <optional>

namespace brimwick {

/// A window by the number that the desktop knows it by.
using WindowNumber = std::uint64_t;

/// What the desktop puts round a window, in the desktop's own pixels.
struct FrameMargins {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
};

/// What the desktop decides about our own windows: focus and held keys. Main thread only.
class WindowSystem {
  public:
    virtual ~WindowSystem() = default;
    /// The frame that a window not shown yet will get; nothing when the desktop does not tell beforehand.
    virtual std::optional<FrameMargins> frameMargins(WindowNumber window) = 0;
    /// To be called before a hidden window is shown, so that it is allowed to take the focus.
    virtual void prepareToShow(WindowNumber window) = 0;
    /// Raises a shown window and gives it the keyboard focus, on behalf of the user's last request.
    virtual void makeKeyAndOrderFront(WindowNumber window) = 0;
    /// Whether keys go to this window, as soon as no hot key that is held down keeps them to itself.
    virtual bool hasKeyboardFocus(WindowNumber window) = 0;
    /// To be called before a window is hidden by a key press: a key that is still held down does not repeat
    /// into whatever gets the focus next.
    virtual void withholdHeldKeys() = 0;
};

} // namespace brimwick
