#pragma once

#include <unistd.h>

#include <utility>

namespace brimwick {

/// Owns an open file descriptor, or none.
class FileDescriptor {
  public:
    explicit FileDescriptor(int descriptor = -1) : descriptor_(descriptor) {}
    FileDescriptor(FileDescriptor&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept {
        std::swap(descriptor_, other.descriptor_);
        return *this;
    }
    ~FileDescriptor() {
        if (descriptor_ >= 0) ::close(descriptor_);
    }

    int get() const { return descriptor_; }
    explicit operator bool() const { return descriptor_ >= 0; }
    /// Hands the descriptor to another owner.
    int release() { return std::exchange(descriptor_, -1); }
    /// Closes now; false when the system reports that something written was lost.
    bool close() { return ::close(release()) == 0; }

  private:
    int descriptor_;
};

} // namespace brimwick
