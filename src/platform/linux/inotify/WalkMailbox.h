#pragma once

#include "platform/linux/inotify/WalkStart.h"
#include "platform/ports/FileDescriptor.h"
#include "platform/ports/FolderList.h"

#include <memory>
#include <mutex>

namespace brimwick {

/// Hands the beginnings and ends of walks over to the watching thread. Any thread; no call waits.
class WalkMailbox {
  public:
    /// What happened since it was asked last.
    struct News {
        bool stopped = false;
        /// A walk began, or several.
        bool begun = false;
        /// The last one to begin has not ended.
        bool running = false;
        /// The last one to end found nothing.
        bool gaveUp = false;
        /// What the last walk to end well found, if one did, and when it had begun.
        std::shared_ptr<const FolderList> found;
        WalkStart foundFrom;
    };

    WalkMailbox();

    void walkBegins();
    void walkEnded(std::shared_ptr<const FolderList> found);
    void stop();

    News take();
    /// Readable while there is news.
    int descriptor() const { return signal_.get(); }

  private:
    void raiseSignal() const;

    FileDescriptor signal_;
    std::mutex mutex_;
    News news_;
    WalkStart lastStart_;
};

} // namespace brimwick
