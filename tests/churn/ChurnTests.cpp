#include "churn/FolderChurn.h"
#include "folder_events/IndexedFolders.h"

#include <gtest/gtest.h>
#include <malloc.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <iostream>

namespace brimwick {
namespace {

constexpr std::size_t operationsPerSecond = 2000;
/// A busy machine may do fewer; with less than this part of them nothing has been tried.
constexpr double leastPartOfTheRate = 0.25;
constexpr std::size_t foldersAtRest = 500;
/// Its caches grow for the first minute or so and then stay; eight bytes an operation would already be more.
constexpr std::size_t bytesThatTheAllocatorKeeps = 900'000;

std::size_t secondsOfChurning() {
    const char* seconds = std::getenv("BRIMWICK_CHURN_SECONDS");
    return seconds != nullptr ? std::strtoul(seconds, nullptr, 10) : 60;
}

/// In memory where there is such a place: not every disk takes so many operations in a second.
std::string placeToChurn() {
    const std::string memory = "/dev/shm";
    return access(memory.c_str(), W_OK | X_OK) == 0 ? memory
                                                    : std::filesystem::temp_directory_path().string();
}

void judgeRate(double rate) {
    EXPECT_GE(rate, leastPartOfTheRate * operationsPerSecond);
    if (rate < 0.95 * operationsPerSecond)
        std::cout << "WARNING: THIS MACHINE COULD NOT KEEP THE RATE: " << rate << " operations a second, not "
                  << operationsPerSecond << "\n";
}

std::size_t openFiles() {
    const std::filesystem::directory_iterator files("/proc/self/fd");
    return static_cast<std::size_t>(std::distance(begin(files), end(files)));
}

std::size_t bytesInUse() {
    malloc_trim(0);
    const auto info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool memoryCanBeMeasured = false;
#else
constexpr bool memoryCanBeMeasured = true;
#endif

} // namespace

TEST(Churn, TheIndexIsTrueInTheEndAndNothingIsLeftBehind) {
    const TemporaryFolder home(placeToChurn());
    const std::string root = home.makeFolder("root");
    FolderChurn churn(root, home.makeFolder("outside"), foldersAtRest);
    IndexedFolders folders({root});
    ASSERT_TRUE(folders.becomesTrue());

    std::size_t searches = 0, hits = 0, rounds = 0;
    const auto churnFor = [&](std::size_t operations) {
        churn.start(operations, operationsPerSecond);
        for (; !churn.isDone(); ++rounds) {
            folders.runTask();
            hits += folders.index()->search(rounds % 2 == 0 ? "fol" : "er1").size();
            ++searches;
        }
        churn.stop();
        judgeRate(churn.rate());
        EXPECT_TRUE(folders.becomesTrue());
        churn.reset();
        EXPECT_TRUE(folders.becomesTrue());
        EXPECT_EQ(folders.index()->size(), foldersAtRest + 1);
        EXPECT_TRUE(folders.areWatched(foldersAtRest + 1));
    };
    const std::size_t seconds = secondsOfChurning();
    churnFor(operationsPerSecond * std::max<std::size_t>(seconds / 10, 1));
    const std::size_t filesBefore = openFiles();
    const std::size_t bytesBefore = bytesInUse();

    churnFor(operationsPerSecond * seconds);
    EXPECT_EQ(openFiles(), filesBefore);
    if (memoryCanBeMeasured) {
        EXPECT_LT(bytesInUse(), bytesBefore + bytesThatTheAllocatorKeeps);
    }
    EXPECT_GT(hits, searches);
    std::cout << operationsPerSecond * seconds << " operations, " << churn.rate() << " a second, " << searches
              << " searches, " << folders.observer().notifications << " notifications\n";
    if (memoryCanBeMeasured)
        std::cout << bytesBefore << " bytes in use before, " << bytesInUse() << " after\n";
}

} // namespace brimwick
