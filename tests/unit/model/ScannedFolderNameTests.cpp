#include "model/ScannedFolderName.h"

#include <gtest/gtest.h>

#include <thread>

namespace brimwick {

TEST(ScannedFolderName, IsEmptyAtFirstAndThenTheLastOneSet) {
    ScannedFolderName name;
    EXPECT_EQ(name.get(), "");
    name.set("Documents");
    name.set("Music");
    EXPECT_EQ(name.get(), "Music");
}

TEST(ScannedFolderName, IsReadWholeWhileAnotherThreadSetsIt) {
    ScannedFolderName name;
    const std::string one(100, 'a');
    const std::string other(200, 'b');
    name.set(one);
    std::jthread setter([&](const std::stop_token& stop) {
        while (!stop.stop_requested()) {
            name.set(other);
            name.set(one);
        }
    });
    for (int i = 0; i < 10000; ++i) {
        const std::string read = name.get();
        ASSERT_TRUE(read == one || read == other);
    }
}

} // namespace brimwick
