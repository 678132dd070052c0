#include "folder_events/FolderEventsTest.h"

#include "platform/linux/inotify/WalkStart.h"

#include <sys/stat.h>

#include <algorithm>
#include <chrono>
#include <thread>

namespace brimwick {

void waitUntilOld(const std::string& folder) {
    struct stat status {};
    do {
        std::this_thread::yield();
        ASSERT_EQ(stat(folder.c_str(), &status), 0);
    } while (WalkStart::now().mayPrecedeChangeOf(status));
}

void FolderEventsTest::start() {
    startStream();
    endWalk(walked());
}

void FolderEventsTest::startStream() {
    options_.settled = [this](const WatchingOptions::Figures& figures) {
        {
            const std::lock_guard lock(mutex_);
            figures_ = figures;
            ++timesSettled_;
        }
        settled_.notify_all();
    };
    stream_.emplace(mainLoop_, options_);
    beginWalk();
    stream_->start(roots_, {isIndexedName, appendSubfolderNames},
                   {[this](const Flags& flags) { deliveries_.push_back(flags); },
                    [this](const std::string& why) { limits_.push_back(why); }});
}

void FolderEventsTest::beginWalk() {
    stream_->walkBegins();
}

void FolderEventsTest::endWalk(std::shared_ptr<const FolderList> found) {
    std::unique_lock lock(mutex_);
    const unsigned before = timesSettled_;
    stream_->walkEnded(std::move(found));
    const bool followed =
        settled_.wait_for(lock, std::chrono::seconds(60), [this, before] { return timesSettled_ > before; });
    EXPECT_TRUE(followed) << "the walk was not followed";
}

Flags FolderEventsTest::flagsUpTo(std::uint32_t last) {
    runUntil([&] { return !deliveries_.empty() && deliveries_.back().back() == last; });
    return takeFlags();
}

Flags FolderEventsTest::nextFlags(std::size_t count) {
    runUntil([&] { return joined().size() >= count; });
    return takeFlags();
}

Flags FolderEventsTest::flagsSoFar() {
    while (mainLoop_.hasTasks()) mainLoop_.runNext();
    return takeFlags();
}

Flags FolderEventsTest::joined() const {
    Flags flags;
    for (const Flags& delivery : deliveries_) flags.insert(flags.end(), delivery.begin(), delivery.end());
    return flags;
}

Flags FolderEventsTest::takeFlags() {
    Flags flags = joined();
    deliveries_.clear();
    return flags;
}

::testing::AssertionResult FolderEventsTest::onlyTellsWhatIsMadeIn(const std::string& folder) {
    static unsigned number = 0;
    const std::string marker =
        (folder.empty() ? std::string() : folder + "/") + "marker" + std::to_string(++number);
    // One event alone, or two, could be the very ones that must not be told.
    const Flags signature = {created, removed, created, removed, created};
    for (const std::uint32_t flag : signature) {
        if (flag == created)
            makeFolder(marker);
        else
            remove(marker);
    }
    runUntil([&] {
        const Flags told = joined();
        return std::ranges::search(told, signature).begin() != told.end();
    });
    const Flags flags = takeFlags();
    if (flags == signature) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << "told " << testing::PrintToString(flags);
}

} // namespace brimwick
