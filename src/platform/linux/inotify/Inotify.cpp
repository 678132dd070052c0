#include "platform/linux/inotify/Inotify.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace brimwick {
namespace {

constexpr std::size_t bytesOfOneBatch = 65536;

} // namespace

Inotify::Inotify(bool available) {
    if (!available) {
        error_ = ENOSYS;
        return;
    }
    queue_ = FileDescriptor(inotify_init1(IN_NONBLOCK | IN_CLOEXEC));
    if (!queue_) error_ = errno;
}

WatchNumber Inotify::add(const char* path, std::uint32_t mask) const {
    if (!queue_) {
        errno = error_;
        return -1;
    }
    return inotify_add_watch(queue_.get(), path, mask);
}

bool Inotify::lacksRoom() const {
    return errno == ENOSPC || errno == ENOMEM || !queue_;
}

void Inotify::remove(WatchNumber watch) const {
    if (queue_) inotify_rm_watch(queue_.get(), watch);
}

void Inotify::read(std::vector<InotifyEvent>& events) {
    events.clear();
    if (!queue_) return;
    buffer_.resize(bytesOfOneBatch);
    const ssize_t filled = ::read(queue_.get(), buffer_.data(), buffer_.size());
    for (ssize_t start = 0; start < filled;) {
        inotify_event event{};
        std::memcpy(&event, buffer_.data() + start, sizeof event);
        const char* name = buffer_.data() + start + sizeof event;
        events.push_back({event.wd, event.mask, event.cookie, {name, strnlen(name, event.len)}});
        start += static_cast<ssize_t>(sizeof event + event.len);
    }
}

} // namespace brimwick
