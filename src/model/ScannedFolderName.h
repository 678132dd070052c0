#pragma once

#include <mutex>
#include <string>
#include <string_view>

namespace brimwick {

/// The name of the folder that a walk is in at the moment. The walk sets it, whoever shows it asks now and
/// then: any thread.
class ScannedFolderName {
  public:
    void set(std::string_view name) {
        const std::lock_guard lock(mutex_);
        name_ = name;
    }
    /// Bytes; empty before the first walk came to a subfolder.
    std::string get() const {
        const std::lock_guard lock(mutex_);
        return name_;
    }

  private:
    mutable std::mutex mutex_;
    std::string name_;
};

} // namespace brimwick
