#include "platform/linux/inotify/Inotify.h"

#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstring>

namespace brimwick {
namespace {

constexpr std::size_t bytesOfOneBatch = 65536;
/// The longest event: one with the longest name.
constexpr std::size_t bytesOfOneEvent = sizeof(inotify_event) + NAME_MAX + 1;
/// In milliseconds. The system queues both halves of a rename in one go, but wakes the reader at the first.
constexpr int timeForOtherHalf = 20;

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
    const std::size_t filled = readMore(0, events);
    constexpr std::uint32_t folderMovedAway = IN_MOVED_FROM | IN_ISDIR;
    if (events.empty() || (events.back().mask & folderMovedAway) != folderMovedAway) return;
    // Once: folders that are moved out of sight one after the other have no other halves.
    pollfd queue{queue_.get(), POLLIN, 0};
    if (filled + bytesOfOneEvent <= buffer_.size() && poll(&queue, 1, timeForOtherHalf) == 1)
        readMore(filled, events);
}

std::size_t Inotify::readMore(std::size_t start, std::vector<InotifyEvent>& events) {
    const ssize_t count = ::read(queue_.get(), buffer_.data() + start, buffer_.size() - start);
    if (count <= 0) return buffer_.size();
    const std::size_t filled = start + static_cast<std::size_t>(count);
    while (start < filled) {
        inotify_event event{};
        std::memcpy(&event, buffer_.data() + start, sizeof event);
        const char* name = buffer_.data() + start + sizeof event;
        events.push_back({event.wd, event.mask, event.cookie, {name, strnlen(name, event.len)}});
        start += sizeof event + event.len;
    }
    return filled;
}

} // namespace brimwick
