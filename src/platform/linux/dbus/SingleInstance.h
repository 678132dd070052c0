#pragma once

namespace brimwick {

/// Whether this process is the user's only Brimwick on this session bus. Without a bus there is no telling.
class SingleInstance {
  public:
    /// Asks the bus for the program's name.
    SingleInstance();
    bool anotherIsRunning() const { return anotherIsRunning_; }

  private:
    bool anotherIsRunning_ = false;
};

} // namespace brimwick
