#include "hotkeys/HotKeyRegistry.h"

#include <algorithm>

namespace brimwick {

HotKeyRegistry::HotKeyRegistry(HotKeyService& service) : service_(service) {
    service_.setReleaseHandler([this](const HotKeyRelease& release) { hotKeyWasReleased(release); });
}

HotKeyRegistry::~HotKeyRegistry() {
    service_.setReleaseHandler(nullptr);
}

void HotKeyRegistry::hotKeyWasReleased(const HotKeyRelease& release) const {
    const auto place = std::ranges::find(hotKeys_, release.identifier, &RegisteredHotKey::hotKeyID);
    if (place == hotKeys_.end()) return;
    // What it invokes may register other hot keys, or none in its place.
    const std::shared_ptr<const RegisteredHotKey> hotKey = *place;
    hotKey->invokeWithEvent({.type = KeyEventType::keyUp,
                             .keyCode = hotKey->keyCode(),
                             .modifierFlags = release.modifierFlags,
                             .charactersIgnoringModifiers = {},
                             .isARepeat = false,
                             .timestamp = release.timestamp,
                             .x = release.x,
                             .y = release.y,
                             .windowNumber = -1});
}

} // namespace brimwick
