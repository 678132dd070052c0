#include "app/BWApplication.h"

#include "app/KeyDispatcher.h"
#include "model/RealHomeDirectory.h"

#include <QIcon>
#include <QKeyEvent>

#include <cstdio>
#include <exception>

namespace brimwick {

namespace {

bool isModifierKey(int key) {
    switch (key) {
    case Qt::Key_Shift:
    case Qt::Key_Control:
    case Qt::Key_Alt:
    case Qt::Key_AltGr:
    case Qt::Key_Meta:
    case Qt::Key_Super_L:
    case Qt::Key_Super_R:
    case Qt::Key_Hyper_L:
    case Qt::Key_Hyper_R:
    case Qt::Key_CapsLock:
    case Qt::Key_NumLock:
    case Qt::Key_ScrollLock:
        return true;
    default:
        return false;
    }
}

} // namespace

BWApplication::BWApplication(int& argc, char** argv) : QApplication(argc, argv) {
    setApplicationName("org.brimwick.Brimwick");
    setApplicationDisplayName("Brimwick");
    setDesktopFileName("org.brimwick.Brimwick");
    setWindowIcon(QIcon::fromTheme("org.brimwick.Brimwick"));
    setQuitOnLastWindowClosed(false);
}

std::string BWApplication::realHomeDirectory() {
    return brimwick::realHomeDirectory();
}

bool BWApplication::notify(QObject* receiver, QEvent* event) {
    try {
        // A key event passes here once for the window and again for each widget: the first time decides.
        const QEvent::Type type = event->type();
        const bool isKey =
            type == QEvent::KeyPress || type == QEvent::KeyRelease || type == QEvent::ShortcutOverride;
        if (isKey && dispatcher_ != nullptr && receiver->isWindowType() &&
            dispatchKey(*static_cast<QKeyEvent*>(event)))
            return true;
        return QApplication::notify(receiver, event);
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "brimwick: %s\n", failure.what());
    }
    return false;
}

bool BWApplication::dispatchKey(QKeyEvent& event) {
    if (isModifierKey(event.key())) return false;
    const KeyEvent key = keyEvent(event);
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
