#pragma once

#include <atomic>
#include <cstddef>
#include <random>
#include <string>
#include <thread>

namespace brimwick {

/// Makes, renames, moves and removes folders at a steady rate on a thread of its own, some of them with
/// content, some from and to a place outside.
class FolderChurn {
  public:
    /// Fills the root with folders to begin with.
    FolderChurn(std::string root, std::string outside, std::size_t foldersAtRest);

    void start(std::size_t operations, std::size_t perSecond);
    bool isDone() const { return done_; }
    /// Waits for the end.
    void stop();
    /// Puts the root back to how it began.
    void reset();
    /// Since the last start, once it has ended: how many operations the system carried out in a second.
    double rate() const { return rate_; }

  private:
    void churn(std::size_t operations, std::size_t perSecond);
    bool operate();
    std::string place();
    std::size_t random(std::size_t below);

    std::string root_;
    std::string outside_;
    std::size_t foldersAtRest_;
    std::mt19937 random_{20'260'101};
    std::atomic<bool> done_ = false;
    double rate_ = 0;
    std::jthread thread_;
};

} // namespace brimwick
