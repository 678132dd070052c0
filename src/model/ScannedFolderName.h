#pragma once

#include <mutex>
#include <string>
#include <string_view>

namespace brimwick {

/// The name of the folder that a walk is in at the moment. The walking threads set it, whoever shows it asks
/// now and then: any thread.
class ScannedFolderName {
  public:
    /// Where two set a name at the same moment one of them has its way.
    void set(std::string_view name) {
        const std::unique_lock lock(mutex_, std::try_to_lock);
        if (lock) name_ = name;
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
