#pragma once

#include <atomic>
#include <cstdint>
#include <mutex>
#include <string>
#include <system_error>

namespace brimwick {

/// How far the work on some files is: told by the thread that does it, asked by the one that shows it, which
/// may also end it. Any thread.
class TransferProgress {
  public:
    /// All that there is to copy, as far as that is known; 0 as long as it is not.
    void setTotalBytes(std::int64_t count) { totalBytes_ = count; }
    std::int64_t totalBytes() const { return totalBytes_; }
    void addBytes(std::int64_t count) { bytes_ += count; }
    /// All that was copied so far.
    std::int64_t bytes() const { return bytes_; }

    void setItem(const std::string& name) {
        const std::lock_guard lock(mutex_);
        item_ = name;
    }
    /// The name of the item in work.
    std::string item() const {
        const std::lock_guard lock(mutex_);
        return item_;
    }

    /// The item in work fails with `operation_canceled`, or all those that are being flushed together do,
    /// unless their copies have their names already.
    void cancel() { cancelled_ = true; }
    [[nodiscard]] std::error_code checkCancelled() const {
        return cancelled_ ? std::make_error_code(std::errc::operation_canceled) : std::error_code();
    }

  private:
    std::atomic<std::int64_t> totalBytes_ = 0;
    std::atomic<std::int64_t> bytes_ = 0;
    std::atomic<bool> cancelled_ = false;
    mutable std::mutex mutex_;
    std::string item_;
};

} // namespace brimwick
