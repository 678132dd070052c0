#pragma once

#include "platform/ports/FileDescriptor.h"

#include <sys/inotify.h>

#include <cstdint>
#include <string_view>
#include <vector>

namespace brimwick {

/// A number that the system gives a watched folder. They grow; none is given twice.
using WatchNumber = int;

/// The events of names that appear in a folder and disappear from it.
inline constexpr std::uint32_t namesComeAndGo = IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO;

/// What happened in a watched folder, as the system tells it.
struct InotifyEvent {
    WatchNumber watch = -1;
    std::uint32_t mask = 0;
    /// Joins the two halves of a rename.
    std::uint32_t cookie = 0;
    /// Valid until the next reading.
    std::string_view name;
};

/// One queue of such events. One thread at a time.
class Inotify {
  public:
    /// Without a queue when `available` is false.
    explicit Inotify(bool available = true);

    /// 0, or why there is no queue (an errno value).
    int error() const { return error_; }
    /// Readable while there are events.
    int descriptor() const { return queue_.get(); }

    /// The number of the watch that stands now; -1 with errno set when it could not be made.
    WatchNumber add(const char* path, std::uint32_t mask) const;
    /// After an add() that failed: whether that was for want of room for another watch, not for the folder.
    bool lacksRoom() const;
    void remove(WatchNumber watch) const;
    /// Replaces `events` by the next batch, in order. Empty when nothing waits. Where it would end with the
    /// first half of a folder's rename, the other half gets a moment to arrive.
    void read(std::vector<InotifyEvent>& events);

  private:
    /// Reads into the buffer from there on; yields how much of the buffer is used then, all when nothing
    /// came.
    std::size_t readMore(std::size_t start, std::vector<InotifyEvent>& events);

    FileDescriptor queue_;
    int error_ = 0;
    std::vector<char> buffer_;
};

} // namespace brimwick
