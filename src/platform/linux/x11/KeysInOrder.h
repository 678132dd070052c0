#pragma once

#include <QAbstractNativeEventFilter>

namespace brimwick {

/// Has every event delivered before the next key press is looked at. A burst would be looked at as a whole
/// otherwise, and a compose sequence that begins right after the focus came would know of no focus yet and
/// fall apart. Watches the events of the application object from its making on; main thread only. Whoever
/// runs a loop of events inside the handling of one gets later keys there, ahead of the one at hand.
class KeysInOrder : public QAbstractNativeEventFilter {
  public:
    KeysInOrder();

    bool nativeEventFilter(const QByteArray& eventKind, void* message, qintptr* result) override;
};

} // namespace brimwick
