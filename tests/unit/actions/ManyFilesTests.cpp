#include <gmock/gmock.h>

#include <chrono>
#include <thread>

#include "unit/actions/ActionFixture.h"

namespace brimwick {

namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

/// More than are copied together.
class ThousandsOfFiles : public ActionBetweenFileSystems {
  protected:
    ThousandsOfFiles() {
        for (int number = 10000; number < 11300; ++number) {
            files.push_back(std::to_string(number));
            home.makeFile("from/" + files.back(), "content of " + files.back());
        }
    }
    void expectAllIn(const std::string& folder) const {
        EXPECT_EQ(namesIn(folder), files);
        for (const std::string& name : files)
            EXPECT_EQ(TemporaryFolder::read(folder + "/" + name), "content of " + name);
    }

    Names files;
};

TEST_F(ThousandsOfFiles, AreCopiedAndToldInTheirOrder) {
    BWAction copy = actionTo(BWModeCopy, files);
    EXPECT_TRUE(copy.performActionInDirection(forwards));
    expectAllIn(other.path());
    expectAllIn(home / "from");
    const auto texts = service.texts();
    ASSERT_EQ(texts.size(), files.size());
    for (std::size_t i = 0; i < files.size(); ++i)
        EXPECT_THAT(texts[i], StartsWith("Copied file " + files[i]));
}

TEST_F(ThousandsOfFiles, AreMovedThereAndBack) {
    BWAction move = actionTo(BWModeMove, files);
    EXPECT_TRUE(move.performActionInDirection(forwards));
    expectAllIn(other.path());
    EXPECT_THAT(namesIn(home / "from"), IsEmpty());
    EXPECT_TRUE(move.performActionInDirection(backwards));
    expectAllIn(home / "from");
    EXPECT_THAT(namesIn(other.path()), IsEmpty());
}

TEST_F(ThousandsOfFiles, AreMovedOnceThoughOneIsNamedAgainMuchLater) {
    Names more = files;
    more.push_back(files.front());
    BWAction move = actionTo(BWModeMove, more);
    EXPECT_TRUE(move.performActionInDirection(forwards));
    EXPECT_EQ(move.targetFiles().size(), files.size());
    expectAllIn(other.path());
}

TEST_F(ThousandsOfFiles, AreMovedUpToTheOneThatFailsThoughThoseAfterItAreCopiedAlready) {
    const FileDescriptor writer(open((home / "from/10500").c_str(), O_WRONLY | O_CLOEXEC));
    BWAction move = actionTo(BWModeMove, files);
    EXPECT_FALSE(move.performActionInDirection(forwards));
    ASSERT_EQ(service.texts().size(), 501U);
    EXPECT_THAT(service.texts().back(), HasSubstr(home / "from/10500"));
    // Complete here and there, since somebody may still write to it.
    EXPECT_EQ(namesIn(other.path()), Names(files.begin(), files.begin() + 501));
    EXPECT_EQ(namesIn(home / "from"), Names(files.begin() + 500, files.end()));
}

/// The end of the one name changes the status of the other one, which is being copied.
TEST_F(ThousandsOfFiles, OfWhichMostAreSecondNamesOfOthersAreMoved) {
    constexpr std::size_t together = 1000;
    for (std::size_t i = together; i < files.size(); ++i) {
        const std::string second = home / ("from/" + files[i]);
        std::filesystem::remove(second);
        require(link((home / ("from/" + files[i - together])).c_str(), second.c_str()) == 0, "link");
    }
    BWAction move = actionTo(BWModeMove, files);
    EXPECT_TRUE(move.performActionInDirection(forwards)) << service.texts().back();
    EXPECT_EQ(namesIn(other.path()), files);
    EXPECT_THAT(namesIn(home / "from"), IsEmpty());
}

/// As a user who cancels at some moment.
class LateCancellingWorkRunner : public WorkRunner {
  public:
    explicit LateCancellingWorkRunner(std::chrono::milliseconds after) : after_(after) {}
    void run(const FileWork& work) override {
        std::thread worker(work.perform);
        std::this_thread::sleep_for(after_);
        work.progress.cancel();
        worker.join();
        work.report();
    }

  private:
    std::chrono::milliseconds after_;
};

TEST_F(ThousandsOfFiles, LieAtExactlyOnePlaceEachWhenTheirMoveIsCancelled) {
    for (int milliseconds = 0; milliseconds < 100; milliseconds += 12) {
        LateCancellingWorkRunner late{std::chrono::milliseconds(milliseconds)};
        BWAction move = runBy(late, actionTo(BWModeMove, namesIn(home / "from")));
        move.performActionInDirection(forwards);
        Names all = namesIn(home / "from");
        const Names moved = namesIn(other.path());
        all.insert(all.end(), moved.begin(), moved.end());
        std::ranges::sort(all);
        EXPECT_EQ(all, files);
        for (const std::string& name : moved) std::filesystem::copy(other / name, home / ("from/" + name));
        for (const std::string& name : moved) std::filesystem::remove(other / name);
    }
}

} // namespace

} // namespace brimwick
