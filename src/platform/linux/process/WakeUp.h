#pragma once

namespace brimwick {

/// Ends another thread's sleep in poll(). An eventfd, owned.
class WakeUp {
  public:
    WakeUp();
    WakeUp(const WakeUp&) = delete;
    WakeUp& operator=(const WakeUp&) = delete;
    ~WakeUp();

    /// Readable from the first wake() on, until it is read.
    int descriptor() const { return descriptor_; }
    /// From any thread.
    void wake() const;

  private:
    int descriptor_;
};

} // namespace brimwick
