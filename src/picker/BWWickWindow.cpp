#include "picker/BWWickWindow.h"

#include "picker/PickerGeometry.h"

#include <QApplication>
#include <QCloseEvent>
#include <QScreen>
#include <QTimer>
#include <QWindow>

#include <algorithm>
#include <chrono>
#include <cmath>

namespace brimwick {

namespace {

constexpr std::chrono::milliseconds settlingTime{1000};

} // namespace

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
        windowSystem_.withholdHeldKeys();
        hide();
        notifications_.postNotification("BWWickWindowClosed", this);
        return;
    }
    learnMargins();
    placeOnScreen();
    windowSystem_.prepareToShow(winId());
    inputBarrier_.guard(*windowHandle());
    show();
    makeKeyAndOrderFront();
}

void BWWickWindow::makeKeyAndOrderFront() {
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
    return contentOfUser_ ? *contentOfUser_ + marginsSize() : requestedFrame_;
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
    setMinimumFrameSize(minimumFrame_);
    contentOfUser_.reset();
    contentOfRequest_ = (requestedFrame_ - marginsSize()).expandedTo(minimumSize());
    requestIsSettled_ = !isVisible();
    // A desktop that never follows exactly has had its time by then.
    if (!requestIsSettled_) QTimer::singleShot(settlingTime, this, [this] { requestIsSettled_ = true; });
    resize(contentOfRequest_);
}

void BWWickWindow::learnMargins() {
    if (!margins_.isNull()) return;
    const auto margins = windowSystem_.frameMargins(winId());
    if (!margins) return;
    const auto points = [this](int pixels) { return qRound(pixels / devicePixelRatioF()); };
    adoptMargins(
        {points(margins->left), points(margins->top), points(margins->right), points(margins->bottom)});
}

void BWWickWindow::noticeMargins() {
    if (windowHandle() == nullptr || !isVisible()) return;
    const QMargins margins = windowHandle()->frameMargins();
    // None at all means that they are not known again yet.
    if (!margins.isNull()) adoptMargins(margins);
}

void BWWickWindow::adoptMargins(const QMargins& margins) {
    if (margins == margins_) return;
    requestedFrame_ = frameSize();
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

bool BWWickWindow::isAsRequested(QSize content) const {
    // On a screen scaled by a fraction a size comes back a point off, as whole pixels allow.
    const int tolerance = devicePixelRatioF() == std::floor(devicePixelRatioF()) ? 0 : 1;
    const QSize difference = content - contentOfRequest_;
    return std::abs(difference.width()) <= tolerance && std::abs(difference.height()) <= tolerance;
}

void BWWickWindow::closeEvent(QCloseEvent* event) {
    event->ignore();
    windowSystem_.withholdHeldKeys();
    hide();
}

void BWWickWindow::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    if (event->spontaneous()) {
        if (isAsRequested(size())) {
            requestIsSettled_ = true;
            contentOfUser_.reset();
        } else if (requestIsSettled_) {
            contentOfUser_ = size();
        }
    }
    if (layout_) layout_();
}

} // namespace brimwick
