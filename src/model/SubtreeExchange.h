#pragma once

#include "model/FolderFindings.h"
#include "platform/ports/FileDescriptor.h"

#include <atomic>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <string>

namespace brimwick {

/// Subfolders of one folder that are walked together by one thread.
struct Subtrees {
    /// The folder that they lie in, open.
    FileDescriptor parent;
    /// Their names, each closed by a NUL.
    std::string names;

    /// Where they were put, once they have been walked.
    const FolderFindings* findings = nullptr;
    FolderRange folders;
    /// The folder's subfolders after these, which others have walked; null when these are the last.
    const Subtrees* following = nullptr;
};

/// Where the threads of one walk hand subtrees to each other: one that has run out of folders waits here, and
/// one that sees this shares what it has. Any thread.
class SubtreeExchange {
  public:
    /// Whether a thread waits for whom nothing has been handed over yet.
    bool isWanting() const { return wanting_.load(std::memory_order_relaxed) > 0; }
    /// Hands subtrees over. What is returned stays where it is as long as the exchange.
    const Subtrees& give(Subtrees subtrees);
    /// Waits for subtrees; null when the walk is over. Only the taker touches them until then.
    Subtrees* take();
    /// To be called when the taken subtrees, and all that lies in them, have been walked or handed over. The
    /// walk is over when nobody walks and nothing waits.
    void finish();
    /// Ends the walk: nothing is taken any more.
    void close();

  private:
    void countWanting();

    std::mutex mutex_;
    std::condition_variable changed_;
    std::deque<Subtrees> subtrees_;
    std::size_t taken_ = 0;
    unsigned walking_ = 0;
    unsigned waiting_ = 0;
    bool closed_ = false;
    std::atomic<int> wanting_ = 0;
};

} // namespace brimwick
