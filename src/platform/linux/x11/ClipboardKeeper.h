#pragma once

#include "platform/linux/process/WakeUp.h"
#include "platform/linux/x11/ClipboardLoop.h"

#include <deque>
#include <future>
#include <mutex>
#include <thread>

namespace brimwick {

/// Reads what another program copies and gives the user's clipboard back. It serves the clipboard on a thread
/// and a connection of its own, so that no program ever waits for us. Used from the main thread.
class ClipboardKeeper {
  public:
    /// The clipboard's contents when this very process owns it, which cannot answer while it waits; else
    /// nothing. Called on the main thread.
    using Snapshot = std::function<std::optional<ClipboardContents>()>;

    /// Nothing when there is no X server.
    static std::unique_ptr<ClipboardKeeper> start(Snapshot snapshot = {});
    ClipboardKeeper(std::unique_ptr<XcbConnection> connection, Snapshot snapshot);
    ClipboardKeeper(const ClipboardKeeper&) = delete;
    ClipboardKeeper& operator=(const ClipboardKeeper&) = delete;
    /// Leaves the user's clipboard to the desktop's clipboard manager, if there is one.
    ~ClipboardKeeper();

    /// Makes another program copy and reads what it copied under this target, such as "text/uri-list";
    /// nothing when it copied nothing or nothing of that kind. The clipboard is then as it was. Waits for the
    /// other program, but never longer than a few seconds in all.
    tl::expected<std::string, CopyFailure> readCopied(ClipboardLoop::Copy copy, const std::string& target);

  private:
    struct Request {
        ClipboardLoop::Copy copy;
        std::string target;
        std::shared_ptr<const ClipboardContents> known;
        std::promise<tl::expected<std::string, CopyFailure>> answer;
    };

    void run(std::unique_ptr<XcbConnection> connection);
    void serve(ClipboardLoop& loop);
    bool hasWork();
    std::optional<Request> nextRequest();
    void endWithoutServer();

    Snapshot snapshot_;
    WakeUp wakeUp_;
    std::mutex mutex_;
    std::deque<Request> requests_;
    bool stopping_ = false;
    bool ended_ = false;
    std::thread thread_;
};

} // namespace brimwick
