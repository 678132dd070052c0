#include "platform/linux/inotify/InotifyFolderEventStream.h"

#include "platform/linux/inotify/FolderWatcher.h"
#include "platform/linux/inotify/WatchingTexts.h"
#include "platform/ports/ThreadPriority.h"
#include "platform/ports/VectorRegisters.h"

#include <pthread.h>

#include <exception>

namespace brimwick {
namespace {

/// Of the calling thread alone.
void becomeBackgroundThread() {
    pthread_setname_np(pthread_self(), "folder-events");
    clearWideRegisters();
    lowerThreadPriority();
}

} // namespace

InotifyFolderEventStream::InotifyFolderEventStream(MainLoop& mainLoop, WatchingOptions options)
    : mainLoop_(mainLoop), options_(std::move(options)), folders_(!options_.withoutInotify),
      wayToRoots_(!options_.withoutInotify), error_(folders_.error()) {}

InotifyFolderEventStream::~InotifyFolderEventStream() {
    mailbox_.stop();
}

Capability InotifyFolderEventStream::capability() const {
    if (error_ == 0) return {true, {}};
    return {false, watchingIsUnavailable(error_)};
}

void InotifyFolderEventStream::start(std::vector<std::string> rootPaths, FolderRules rules,
                                     Handlers handlers) {
    if (handlers_) return;
    handlers_ = std::make_shared<const Handlers>(std::move(handlers));
    try {
        watcher_ = std::jthread([this, roots = std::move(rootPaths), rules] { watch(roots, rules); });
    } catch (const std::exception& failure) {
        postLimit(watchingCannotStart(failure.what()));
    }
}

void InotifyFolderEventStream::watch(const std::vector<std::string>& rootPaths, const FolderRules& rules) {
    becomeBackgroundThread();
    try {
        FolderWatcher(rootPaths, rules, options_, std::move(folders_), std::move(wayToRoots_), mailbox_,
                      {[this](std::vector<std::uint32_t> flags) { postEvents(std::move(flags)); },
                       [this](std::string why) { postLimit(std::move(why)); }})
            .run();
    } catch (const std::exception& failure) {
        postLimit(watchingHasEnded(failure.what()));
    }
}

void InotifyFolderEventStream::postEvents(std::vector<std::uint32_t> flags) {
    mainLoop_.post([handlers = std::weak_ptr(handlers_), flags = std::move(flags)] {
        if (const auto present = handlers.lock()) present->eventsArrived(flags);
    });
}

void InotifyFolderEventStream::postLimit(std::string why) {
    mainLoop_.post([handlers = std::weak_ptr(handlers_), why = std::move(why)] {
        if (const auto present = handlers.lock()) present->watchingIsLimited(why);
    });
}

} // namespace brimwick
