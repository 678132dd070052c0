#include "folder_events/FolderEventsTest.h"

#include <gmock/gmock.h>

#include <atomic>
#include <thread>

namespace brimwick {

using testing::AnyOf;
using testing::ElementsAre;

TEST_F(FolderEventsTest, TellsWhatWasMissedWhenTheWalkThatWouldHaveFoundItIsGivenUp) {
    for (int i = 0; i < 10'000; ++i) std::filesystem::create_directory(below(std::to_string(i)));
    // The first look takes the end of the walk, the second ends the part of setting the watches in which the
    // difference is found, and the third sees that another walk has begun.
    std::atomic<int> looks = -1;
    options_.beforeReading = [this, &looks] {
        if (looks == 2) stream_->walkBegins();
        if (looks >= 0) ++looks;
    };
    startStream();
    const auto found = walked();
    makeFolder("missed");
    looks = 0;
    stream_->walkEnded(found);
    while (looks < 3) std::this_thread::yield();
    stream_->walkEnded(nullptr);
    // With its kind, where the thread learns of the other walk's beginning and end at once.
    EXPECT_THAT(nextFlags(1), ElementsAre(AnyOf(FolderEventFlag::isFolder, created)));
    stream_.reset();
}

} // namespace brimwick
