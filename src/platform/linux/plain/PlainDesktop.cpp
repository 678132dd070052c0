#include "platform/linux/plain/PlainDesktop.h"

#include <QGuiApplication>
#include <QWindow>

namespace brimwick {

Capability PlainHotKeyService::capability() const {
    return {false, "System-wide hot keys are not available on this desktop."};
}

HotKeyGrant PlainHotKeyService::grab(std::uint16_t /*keyCode*/, std::uint32_t /*modifiers*/,
                                     std::uint32_t /*identifier*/) {
    return {nullptr, capability().reason};
}

Capability PlainFileManager::capability() const {
    return {false, "The file manager's selection cannot be read on this desktop."};
}

void PlainWindowSystem::makeKeyAndOrderFront(WindowNumber window) {
    for (QWindow* own : QGuiApplication::topLevelWindows()) {
        if (own->handle() == nullptr || own->winId() != window) continue;
        own->raise();
        own->requestActivate();
    }
}

} // namespace brimwick
