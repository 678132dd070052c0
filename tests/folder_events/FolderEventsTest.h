#pragma once

#include "fakes/FakeMainLoop.h"
#include "fakes/TemporaryFolder.h"
#include "model/FolderIndexer.h"
#include "model/FolderListing.h"
#include "platform/linux/inotify/InotifyFolderEventStream.h"

#include <gtest/gtest.h>

#include <condition_variable>
#include <filesystem>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace brimwick {

using Flags = std::vector<std::uint32_t>;
inline constexpr std::uint32_t created = FolderEventFlag::isFolder | FolderEventFlag::created;
inline constexpr std::uint32_t removed = FolderEventFlag::isFolder | FolderEventFlag::removed;
inline constexpr std::uint32_t renamed = FolderEventFlag::isFolder | FolderEventFlag::renamed;

/// Keeps the watching thread from reading until it is opened.
class Gate {
  public:
    void close() { setOpen(false); }
    void open() { setOpen(true); }
    void wait() {
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [this] { return open_; });
    }

  private:
    void setOpen(bool open) {
        {
            const std::lock_guard lock(mutex_);
            open_ = open;
        }
        changed_.notify_all();
    }

    std::mutex mutex_;
    std::condition_variable changed_;
    bool open_ = true;
};

/// Until a change of the folder can no longer be taken for one of a walk that begins now.
void waitUntilOld(const std::string& folder);

/// The stream on real folders; walks happen when the test says so, and nothing rebuilds by itself.
class FolderEventsTest : public testing::Test {
  protected:
    FolderEventsTest() : root_(folder_.makeFolder("root")), roots_{root_} {}

    std::string below(const std::string& name) const { return root_ + "/" + name; }
    void makeFolder(const std::string& name) const { std::filesystem::create_directories(below(name)); }
    void rename(const std::string& from, const std::string& to) const {
        std::filesystem::rename(below(from), below(to));
    }
    void remove(const std::string& name) const { std::filesystem::remove_all(below(name)); }

    /// Starts the stream and lets it follow a first walk.
    void start();
    void startStream();
    void beginWalk();
    std::shared_ptr<const FolderIndex> walked() const {
        return indexOfFolders(roots_, [](auto) {}, {});
    }
    /// Ends the walk with this and waits until it is followed.
    void endWalk(std::shared_ptr<const FolderList> found);
    void walk() {
        beginWalk();
        endWalk(walked());
    }
    /// Runs what was posted until the condition holds; false when it did not in ten seconds.
    template<typename Condition>
    bool runUntil(Condition condition) {
        while (!condition())
            if (!mainLoop_.runNext()) return false;
        return true;
    }
    /// The flags of the next deliveries, joined, up to the given one.
    Flags flagsUpTo(std::uint32_t last);
    /// The flags of the next deliveries, joined, until there are so many.
    Flags nextFlags(std::size_t count);
    /// The flags of all deliveries so far.
    Flags flagsSoFar();
    /// Makes a new subfolder of that folder, takes it away, and so on until it stays. Whether all that is
    /// told, and nothing else before it. The folder is a watched one: what comes and goes between two
    /// comparisons is not told.
    ::testing::AssertionResult onlyTellsWhatIsMadeIn(const std::string& folder);

    TemporaryFolder folder_;
    std::string root_;
    std::vector<std::string> roots_;
    WatchingOptions options_;
    FakeMainLoop mainLoop_;
    std::vector<Flags> deliveries_;
    std::vector<std::string> limits_;
    WatchingOptions::Figures figures_;
    Gate gate_;

  private:
    Flags joined() const;
    Flags takeFlags();

    std::mutex mutex_;
    std::condition_variable settled_;
    unsigned timesSettled_ = 0;

  protected:
    /// Last: its thread uses the rest.
    std::optional<InotifyFolderEventStream> stream_;
};

} // namespace brimwick
