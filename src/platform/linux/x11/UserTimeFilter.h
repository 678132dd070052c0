#pragma once

#include "platform/linux/x11/UserTime.h"
#include "platform/linux/x11/XcbConnection.h"

#include <QAbstractNativeEventFilter>

namespace brimwick {

/// Notes when the user pressed a key or a button in one of our own windows. Watches the events of the
/// application object from its making on.
class UserTimeFilter : public QAbstractNativeEventFilter {
  public:
    /// Both must outlive the filter.
    UserTimeFilter(UserTime& userTime, const XcbConnection& connection);

    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;

  private:
    UserTime& userTime_;
    /// The number of the extension that button presses come by; 0 when the server lacks it.
    std::uint8_t inputExtension_ = 0;
};

} // namespace brimwick
