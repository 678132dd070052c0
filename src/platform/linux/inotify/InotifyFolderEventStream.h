#pragma once

#include "platform/linux/inotify/Inotify.h"
#include "platform/linux/inotify/WalkMailbox.h"
#include "platform/linux/inotify/WatchingOptions.h"
#include "platform/ports/FolderEventStream.h"
#include "platform/ports/MainLoop.h"

#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace brimwick {

/// Watches the folders on a thread of its own, which takes no processor time while nothing happens. Where the
/// system can watch no folder, or not all of them, the rest is compared now and then. Destroying it ends the
/// thread.
class InotifyFolderEventStream : public FolderEventStream {
  public:
    /// The loop must outlive the stream.
    explicit InotifyFolderEventStream(MainLoop& mainLoop, WatchingOptions options = {});
    ~InotifyFolderEventStream() override;
    InotifyFolderEventStream(const InotifyFolderEventStream&) = delete;
    InotifyFolderEventStream& operator=(const InotifyFolderEventStream&) = delete;

    Capability capability() const override;
    void start(std::vector<std::string> rootPaths, FolderRules rules, Handlers handlers) override;
    void walkBegins() override { mailbox_.walkBegins(); }
    void walkEnded(std::shared_ptr<const FolderList> found) override { mailbox_.walkEnded(std::move(found)); }

  private:
    void watch(const std::vector<std::string>& rootPaths, const FolderRules& rules);
    void postEvents(std::vector<std::uint32_t> flags);
    void postLimit(std::string why);

    MainLoop& mainLoop_;
    WatchingOptions options_;
    Inotify folders_;
    Inotify wayToRoots_;
    /// 0, or why nothing can be watched.
    int error_;
    WalkMailbox mailbox_;
    /// Gone with the stream; what is posted looks after it first.
    std::shared_ptr<const Handlers> handlers_;
    /// Last, so that it has ended before anything that it uses goes.
    std::jthread watcher_;
};

} // namespace brimwick
