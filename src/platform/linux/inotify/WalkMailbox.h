#pragma once

#include "platform/linux/inotify/WalkStart.h"
#include "platform/linux/process/WakeUp.h"
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

    void walkBegins();
    void walkEnded(std::shared_ptr<const FolderList> found);
    void stop();

    /// For the watching thread.
    News take();
    /// Readable while there is news.
    int descriptor() const { return wakeUp_.descriptor(); }

  private:
    WakeUp wakeUp_;
    std::mutex mutex_;
    News news_;
    WalkStart lastStart_;
};

} // namespace brimwick
