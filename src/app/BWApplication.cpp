#include "app/BWApplication.h"

#include "app/KeyDispatcher.h"
#include "app/KeyEventReader.h"
#include "model/RealHomeDirectory.h"
#include "picker/InputBarrier.h"

#include <QIcon>
#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QWidget>
#include <QWindow>
#include <qpa/qwindowsysteminterface.h>

#include <cstdio>
#include <exception>

namespace brimwick {

BWApplication::BWApplication(int& argc, char** argv) : QApplication(argc, argv) {
    setApplicationName("org.brimwick.Brimwick");
    setDesktopFileName("org.brimwick.Brimwick");
    setWindowIcon(QIcon::fromTheme("org.brimwick.Brimwick"));
    setQuitOnLastWindowClosed(false);
}

std::string BWApplication::realHomeDirectory() {
    return brimwick::realHomeDirectory();
}

bool BWApplication::notify(QObject* receiver, QEvent* event) {
    try {
        if (restricted_ && !isAdmitted(receiver, *event)) {
            event->ignore();
            return true;
        }
        if (restricted_) return QApplication::notify(receiver, event);
        const QEvent::Type type = event->type();
        const bool isKey =
            type == QEvent::KeyPress || type == QEvent::KeyRelease || type == QEvent::ShortcutOverride;
        // A key comes to the window, and by it to the widget; from some input methods to the widget alone.
        const bool comesIn = receiver->isWindowType() || receiver == focusObject();
        if (isKey && comesIn && event != keyUnderWay_ && dispatcher_ != nullptr) {
            const QScopedValueRollback<const QEvent*> underWay(keyUnderWay_, event);
            return dispatchKey(*static_cast<QKeyEvent*>(event)) || QApplication::notify(receiver, event);
        }
        // Composed text is sent at once, ahead of the keys that were typed before it and still wait; those
        // that wait while a key is acted on were typed after it.
        if (type == QEvent::InputMethod && keyUnderWay_ == nullptr)
            QWindowSystemInterface::flushWindowSystemEvents();
        return QApplication::notify(receiver, event);
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "brimwick: %s\n", failure.what());
    }
    return false;
}

void BWApplication::restrictInputTo(const QWidget* window) {
    restricted_ = true;
    inputWindow_ = window;
}

bool BWApplication::isAdmitted(const QObject* receiver, const QEvent& event) const {
    const QEvent::Type type = event.type();
    if (!InputBarrier::isInput(event) && type != QEvent::InputMethod && type != QEvent::Shortcut &&
        type != QEvent::Close)
        return true;
    if (inputWindow_ == nullptr) return false;
    const auto* widget = qobject_cast<const QWidget*>(receiver);
    return receiver == inputWindow_->windowHandle() ||
           (widget != nullptr && widget->window() == inputWindow_);
}

bool BWApplication::dispatchKey(QKeyEvent& event) {
    const KeyEvent key = keyEvents_->read(event);
    if (KeyEventReader::isModifierKey(event)) return false;
    bool swallowed = false;
    switch (event.type()) {
    case QEvent::KeyPress:
        swallowed = dispatcher_->handleKeyDown(key);
        break;
    case QEvent::KeyRelease:
        swallowed = dispatcher_->handleKeyUp(key);
        break;
    default:
        // Accepting claims the press for us, ahead of shortcuts; the press itself acts.
        swallowed = dispatcher_->wouldHandleKeyDown(key);
        break;
    }
    if (swallowed) event.accept();
    return swallowed;
}

} // namespace brimwick
