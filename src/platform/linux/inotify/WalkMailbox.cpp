#include "platform/linux/inotify/WalkMailbox.h"

#include <utility>

namespace brimwick {

void WalkMailbox::walkBegins() {
    const WalkStart start = WalkStart::now();
    {
        const std::lock_guard lock(mutex_);
        lastStart_ = start;
        news_.begun = true;
        news_.running = true;
        news_.gaveUp = false;
    }
    wakeUp_.wake();
}

void WalkMailbox::walkEnded(std::shared_ptr<const FolderList> found) {
    {
        const std::lock_guard lock(mutex_);
        news_.running = false;
        if (found) {
            news_.found.swap(found);
            news_.foundFrom = lastStart_;
        } else {
            news_.gaveUp = true;
        }
    }
    wakeUp_.wake();
}

void WalkMailbox::stop() {
    {
        const std::lock_guard lock(mutex_);
        news_.stopped = true;
    }
    wakeUp_.wake();
}

WalkMailbox::News WalkMailbox::take() {
    const std::lock_guard lock(mutex_);
    wakeUp_.clear();
    News taken = std::move(news_);
    news_ = News{};
    news_.stopped = taken.stopped;
    news_.running = taken.running;
    return taken;
}

} // namespace brimwick
