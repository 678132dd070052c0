#include "picker/InputBarrier.h"

#include <QEvent>
#include <QWindow>

namespace brimwick {

bool InputBarrier::isInput(const QEvent& event) {
    switch (event.type()) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::ShortcutOverride:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::Wheel:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TouchCancel:
    case QEvent::TabletPress:
    case QEvent::TabletMove:
    case QEvent::TabletRelease:
    case QEvent::NativeGesture:
    case QEvent::ContextMenu:
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop:
        return true;
    default:
        return false;
    }
}

void InputBarrier::guard(QWindow& window) {
    window.installEventFilter(this);
}

bool InputBarrier::eventFilter(QObject* /*window*/, QEvent* event) {
    return isInput(*event) && isClosed_();
}

} // namespace brimwick
