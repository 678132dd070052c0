#include "model/ScannedFolderName.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace brimwick {

TEST(ScannedFolderName, IsEmptyAtFirstAndThenTheLastOneSet) {
    ScannedFolderName name;
    EXPECT_EQ(name.get(), "");
    name.set("Documents");
    name.set("Music");
    EXPECT_EQ(name.get(), "Music");
}

TEST(ScannedFolderName, IsNotLostToAReader) {
    ScannedFolderName name;
    std::atomic<int> readings = 0;
    const std::jthread reader([&](const std::stop_token& stop) {
        for (; !stop.stop_requested(); ++readings) static_cast<void>(name.get());
    });
    for (int i = 0; i < 20000 || readings < 20000; ++i) {
        name.set(std::to_string(i));
        ASSERT_EQ(name.get(), std::to_string(i));
    }
}

TEST(ScannedFolderName, IsThatOfAThreadThatComesOnWhereAnotherHangs) {
    ScannedFolderName name;
    std::jthread([&name] { name.set("hung"); });
    EXPECT_EQ(name.get(), "hung");
    for (const char* next : {"one", "two", "three"}) {
        name.set(next);
        EXPECT_EQ(name.get(), next);
    }
    EXPECT_EQ(name.get(), "three");
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
