#include "preferences/BWPreferencesWindow.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QApplication>
#include <QCloseEvent>
#include <QScreen>
#include <QWindow>

#include <algorithm>

namespace brimwick {

namespace {

/// A screen reader is told that this is a window, not just anything with controls in it.
QAccessibleInterface* makeAccessibleWindow(const QString& /*className*/, QObject* object) {
    auto* const window = dynamic_cast<BWPreferencesWindow*>(object);
    return window == nullptr ? nullptr : new QAccessibleWidget(window, QAccessible::Dialog);
}

} // namespace

BWPreferencesWindow::BWPreferencesWindow(WindowSystem& windowSystem)
    : QWidget(nullptr,
              Qt::Dialog | Qt::WindowTitleHint | Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint),
      windowSystem_(windowSystem) {
    QAccessible::installFactory(makeAccessibleWindow);
    setAttribute(Qt::WA_QuitOnClose, false);
    setWindowTitle("Brimwick Preferences");
    winId();
    inputBarrier_.guard(*windowHandle());
}

void BWPreferencesWindow::setPhantomMode(bool phantomMode) {
    phantomMode_ = phantomMode;
    if (phantomMode) {
        if (isVisible()) windowSystem_.withholdHeldKeys();
        hide();
        return;
    }
    placeOnScreen();
    windowSystem_.prepareToShow(winId());
    show();
    makeKeyAndOrderFront();
}

void BWPreferencesWindow::makeKeyAndOrderFront() {
    raise();
    windowSystem_.makeKeyAndOrderFront(winId());
}

bool BWPreferencesWindow::isKeyWindow() const {
    return QApplication::activePopupWidget() == nullptr && QApplication::activeWindow() == this;
}

bool BWPreferencesWindow::isKeyWindowForHotKeys() const {
    return isKeyWindow() || windowSystem_.hasKeyboardFocus(winId());
}

void BWPreferencesWindow::placeOnScreen() {
    const QRect visible = screen()->availableGeometry();
    const QSize frame = frameGeometry().size();
    // The origin of the visible part is left out of the account, upwards as well as sideways.
    const int y = (visible.height() - frame.height()) / 2;
    const QPoint position((visible.width() - frame.width()) / 2,
                          std::max(visible.top(), screen()->geometry().bottom() + 1 - y - frame.height()));
    // A window that believes to be there already is placed by the window manager instead.
    if (pos() == position) move(position + QPoint(0, 1));
    move(position);
}

void BWPreferencesWindow::keyPressEvent(QKeyEvent* event) {
    event->accept();
}

void BWPreferencesWindow::closeEvent(QCloseEvent* event) {
    event->ignore();
    setPhantomMode(true);
    closed_();
}

} // namespace brimwick
