#include "picker/BWWickWindow.h"

#include "picker/PickerGeometry.h"

#include <QApplication>
#include <QCloseEvent>
#include <QScreen>
#include <QWindow>

#include <algorithm>

namespace brimwick {

BWWickWindow::BWWickWindow(WorkspaceNotificationCenter& notifications, WindowSystem& windowSystem)
    : QWidget(nullptr,
              Qt::Dialog | Qt::WindowTitleHint | Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint),
      notifications_(notifications), windowSystem_(windowSystem) {
    setAttribute(Qt::WA_QuitOnClose, false);
    setWindowTitle("Brimwick");
}

void BWWickWindow::setPhantomMode(bool phantomMode) {
    phantomMode_ = phantomMode;
    if (phantomMode) {
        requestedFrame_ = frameSize();
        contentOfRequest_ = size();
        windowSystem_.withholdHeldKeys();
        hide();
        notifications_.postNotification("BWWickWindowClosed", this);
        return;
    }
    placeOnScreen();
    windowSystem_.prepareToShow(winId());
    show();
    raise();
    windowSystem_.makeKeyAndOrderFront(winId());
}

void BWWickWindow::placeOnScreen() {
    const QRect available = screen()->availableGeometry();
    const ScreenRect visible{0, 0, double(available.width()), double(available.height())};
    const double x = centredX(visible, frameSize().width());
    // Upside down, and kept whole on the visible part of the screen: the picker ends at its top.
    const double fromTop = visible.height - frameY_ - frameSize().height();
    const double lowest = std::max(0.0, visible.height - frameSize().height());
    const QPoint position(static_cast<int>(x),
                          available.top() + static_cast<int>(std::clamp(fromTop, 0.0, lowest)));
    // A window that believes to be there already is placed by the window manager instead.
    if (pos() == position) move(position + QPoint(0, 1));
    move(position);
}

QSize BWWickWindow::marginsSize() const {
    return {margins_.left() + margins_.right(), margins_.top() + margins_.bottom()};
}

QSize BWWickWindow::frameSize() const {
    return size() == contentOfRequest_ ? requestedFrame_ : size() + marginsSize();
}

void BWWickWindow::setFrameSize(QSize size) {
    requestedFrame_ = size;
    applyFrameSize();
}

void BWWickWindow::setMinimumFrameSize(QSize size) {
    minimumFrame_ = size;
    setMinimumSize((minimumFrame_ - marginsSize()).expandedTo({0, 0}));
}

void BWWickWindow::applyFrameSize() {
    setMinimumSize((minimumFrame_ - marginsSize()).expandedTo({0, 0}));
    const QSize content = (requestedFrame_ - marginsSize()).expandedTo(minimumSize());
    contentOfRequest_ = content;
    resize(content);
}

void BWWickWindow::noticeMargins() {
    if (windowHandle() == nullptr || !isVisible()) return;
    const QMargins margins = windowHandle()->frameMargins();
    if (margins == margins_) return;
    requestedFrame_ = size() == contentOfRequest_ ? requestedFrame_ : size() + marginsSize();
    margins_ = margins;
    applyFrameSize();
}

bool BWWickWindow::event(QEvent* event) {
    switch (event->type()) {
    case QEvent::WindowActivate:
    case QEvent::Move:
    case QEvent::Paint:
    case QEvent::UpdateRequest:
        noticeMargins();
        break;
    case QEvent::WindowDeactivate:
        if (didResignKey_ && QApplication::activePopupWidget() == nullptr) didResignKey_();
        break;
    default:
        break;
    }
    return QWidget::event(event);
}

void BWWickWindow::closeEvent(QCloseEvent* event) {
    event->ignore();
    windowSystem_.withholdHeldKeys();
    hide();
}

void BWWickWindow::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    if (layout_) layout_();
}

} // namespace brimwick
