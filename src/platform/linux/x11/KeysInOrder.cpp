#include "platform/linux/x11/KeysInOrder.h"

#include "platform/linux/x11/XcbEvents.h"

#include <QCoreApplication>
#include <qpa/qwindowsysteminterface.h>

namespace brimwick {

KeysInOrder::KeysInOrder() {
    QCoreApplication::instance()->installNativeEventFilter(this);
}

bool KeysInOrder::nativeEventFilter(const QByteArray& eventKind, void* message, qintptr* /*result*/) {
    if (eventKind == "xcb_generic_event_t" &&
        eventType(*static_cast<const xcb_generic_event_t*>(message)) == XCB_KEY_PRESS)
        QWindowSystemInterface::flushWindowSystemEvents();
    return false;
}

} // namespace brimwick
