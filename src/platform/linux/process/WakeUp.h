#pragma once

#include "platform/ports/FileDescriptor.h"

namespace brimwick {

/// Ends another thread's sleep in poll(). Any thread.
class WakeUp {
  public:
    /// Throws std::system_error when the system gives no further descriptor: nothing could end a sleep then.
    WakeUp();

    /// Readable from a wake() on, until clear().
    int descriptor() const { return descriptor_.get(); }
    void wake() const;
    void clear() const;

  private:
    FileDescriptor descriptor_;
};

} // namespace brimwick
