#include "platform/linux/inotify/WalkMailbox.h"

#include <sys/eventfd.h>

#include <cstdint>
#include <utility>

namespace brimwick {

WalkMailbox::WalkMailbox() : signal_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {}

void WalkMailbox::walkBegins() {
    const WalkStart start = WalkStart::now();
    {
        const std::lock_guard lock(mutex_);
        lastStart_ = start;
        news_.begun = true;
        news_.running = true;
        news_.gaveUp = false;
    }
    raiseSignal();
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
    raiseSignal();
}

void WalkMailbox::stop() {
    {
        const std::lock_guard lock(mutex_);
        news_.stopped = true;
    }
    raiseSignal();
}

WalkMailbox::News WalkMailbox::take() {
    const std::lock_guard lock(mutex_);
    std::uint64_t ignored = 0;
    [[maybe_unused]] const ssize_t size = read(signal_.get(), &ignored, sizeof ignored);
    News taken = std::move(news_);
    news_ = News{};
    news_.stopped = taken.stopped;
    news_.running = taken.running;
    return taken;
}

void WalkMailbox::raiseSignal() const {
    const std::uint64_t one = 1;
    [[maybe_unused]] const ssize_t ignored = write(signal_.get(), &one, sizeof one);
}

} // namespace brimwick
