#pragma once

#include "model/WorkspaceNotificationCenter.h"
#include "picker/InputBarrier.h"
#include "platform/ports/WindowSystem.h"

#include <QWidget>

#include <functional>
#include <optional>

namespace brimwick {

/// The picker's window. It is never closed: phantom mode hides it, and the title bar's close button orders it
/// out. Its size is that of its frame, the title bar included, in points.
class BWWickWindow : public QWidget {
  public:
    BWWickWindow(WorkspaceNotificationCenter& notifications, WindowSystem& windowSystem);

    bool isInPhantomMode() const { return phantomMode_; }
    /// On: transparent, at the desktop's level and the screen's origin, which here means hidden; then posts
    /// "BWWickWindowClosed" with the window as object. Off: centred, shown, made key and brought to the
    /// front.
    void setPhantomMode(bool phantomMode);
    /// Gives the shown window the keyboard focus, in front of all others.
    void makeKeyAndOrderFront();
    double alpha() const { return phantomMode_ ? 0.0 : 1.0; }

    /// The size of the frame as last asked for, or as the user has made it since.
    QSize frameSize() const;
    void setFrameSize(QSize size);
    /// The smallest frame that the user can make.
    void setMinimumFrameSize(QSize size);
    /// The distance of the frame's lower edge from the lower edge of the screen.
    void setFrameY(double y) { frameY_ = y; }
    double frameY() const { return frameY_; }

    /// Called when the window has another size.
    void setLayoutHandler(std::function<void()> handler) { layout_ = std::move(handler); }
    /// Called when the window stops being the key window; not for its own context menus.
    void setDidResignKeyHandler(std::function<void()> handler) { didResignKey_ = std::move(handler); }

  protected:
    bool event(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    void placeOnScreen();
    void applyFrameSize();
    void learnMargins();
    void noticeMargins();
    void adoptMargins(const QMargins& margins);
    QSize marginsSize() const;
    bool isAsRequested(QSize content) const;

    WorkspaceNotificationCenter& notifications_;
    WindowSystem& windowSystem_;
    std::function<void()> layout_;
    std::function<void()> didResignKey_;
    bool phantomMode_ = false;
    InputBarrier inputBarrier_{[this] { return phantomMode_; }};
    double frameY_ = 0;
    QSize requestedFrame_;
    QSize minimumFrame_;
    /// The content that `requestedFrame_` comes to with the margins of the frame.
    QSize contentOfRequest_;
    QMargins margins_;
    /// What the user has made of the content since; nothing while the request stands.
    std::optional<QSize> contentOfUser_;
    /// Whether the desktop has followed the request, so that another size is the user's.
    bool requestIsSettled_ = true;
};

} // namespace brimwick
