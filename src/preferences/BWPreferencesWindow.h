#pragma once

#include "picker/InputBarrier.h"
#include "platform/ports/WindowSystem.h"

#include <QWidget>

#include <functional>

namespace brimwick {

/// The preferences window. It is never closed: phantom mode hides it.
class BWPreferencesWindow : public QWidget {
  public:
    /// The window system outlives the window.
    explicit BWPreferencesWindow(WindowSystem& windowSystem);

    /// Called when the user closed the window by its title bar, after it was hidden.
    void setClosedHandler(std::function<void()> handler) { closed_ = std::move(handler); }

    bool isInPhantomMode() const { return phantomMode_; }
    /// On: transparent, at the desktop's level and the screen's origin, which here means hidden. Off: in the
    /// middle of the screen's visible part, shown, made key and brought to the front.
    void setPhantomMode(bool phantomMode);
    double alpha() const { return phantomMode_ ? 0.0 : 1.0; }
    /// Gives the shown window the keyboard focus, in front of all others.
    void makeKeyAndOrderFront();
    /// Whether key presses come to this window.
    bool isKeyWindow() const;
    /// The same while a hot key is down, for whose sake the framework believes the focus to be elsewhere.
    bool isKeyWindowForHotKeys() const;

  protected:
    /// A key that nothing else wanted.
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

  private:
    void placeOnScreen();

    WindowSystem& windowSystem_;
    std::function<void()> closed_ = [] {};
    bool phantomMode_ = false;
    InputBarrier inputBarrier_{[this] { return phantomMode_; }};
};

} // namespace brimwick
