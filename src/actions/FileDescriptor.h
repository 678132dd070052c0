#pragma once

#include <unistd.h>

#include <cerrno>
#include <system_error>
#include <utility>

namespace brimwick {

/// What the last system call said.
inline std::error_code lastSystemError() {
    return {errno, std::generic_category()};
}

/// Owns an open file descriptor.
class FileDescriptor {
  public:
    FileDescriptor() = default;
    explicit FileDescriptor(int descriptor) : descriptor_(descriptor) {}
    FileDescriptor(FileDescriptor&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept {
        std::swap(descriptor_, other.descriptor_);
        return *this;
    }
    ~FileDescriptor() {
        if (isOpen()) ::close(descriptor_);
    }

    bool isOpen() const { return descriptor_ >= 0; }
    int get() const { return descriptor_; }
    /// Hands the descriptor to another owner.
    int release() { return std::exchange(descriptor_, -1); }
    /// Closes now and says what the kernel answered: a delayed write error may come only here.
    [[nodiscard]] std::error_code close() {
        return ::close(release()) == 0 ? std::error_code() : lastSystemError();
    }

  private:
    int descriptor_ = -1;
};

} // namespace brimwick
