#include "folder_events/IndexedFolders.h"

#include <gtest/gtest.h>

#include <thread>

namespace brimwick {
namespace {

/// The clock of the main loop is the real one: what comes within four seconds extends no running rebuild.
class TrueIndexTest : public testing::Test {
  protected:
    std::string below(const std::string& name) const { return folder_ / "root/" + name; }
    void makeFolder(const std::string& name) const { std::filesystem::create_directories(below(name)); }

    TemporaryFolder folder_;
    std::string root_ = folder_.makeFolder("root");
};

} // namespace

TEST_F(TrueIndexTest, FindsFoldersThatAreMadeAndFilledAgainAndAgain) {
    IndexedFolders folders({root_});
    ASSERT_TRUE(folders.becomesTrue());
    std::jthread maker([this] {
        for (int i = 0; i < 300; ++i) {
            const std::string name = "folder" + std::to_string(i % 20);
            makeFolder(name + "/a/b/c");
            makeFolder(name + "/" + std::to_string(i));
            if (i % 3 == 0) std::filesystem::rename(below(name), below("renamed" + std::to_string(i)));
            if (i % 7 == 0) std::filesystem::remove_all(below(name));
        }
    });
    while (maker.joinable()) {
        folders.runTask();
        if (std::filesystem::exists(below("folder" + std::to_string(299 % 20) + "/299"))) maker.join();
    }
    EXPECT_TRUE(folders.becomesTrue());
}

TEST_F(TrueIndexTest, FindsEveryFolderThatIsMadeByItself) {
    IndexedFolders folders({root_});
    ASSERT_TRUE(folders.becomesTrue());
    std::string name = "a";
    for (int i = 0; i < 40; ++i) {
        makeFolder(name + "/inside/" + std::to_string(i));
        ASSERT_TRUE(folders.becomesTrue()) << i;
        name += i % 10 == 9 ? "a" : "/b";
    }
}

TEST_F(TrueIndexTest, FindsTreesThatGrowDuringTheFirstWalk) {
    for (int i = 0; i < 50; ++i) {
        const std::string tree = "tree" + std::to_string(i);
        std::jthread grower([this, &tree] { makeFolder(tree + "/a/b/c/d/e/f/g/h"); });
        IndexedFolders folders({root_});
        grower.join();
        ASSERT_TRUE(folders.becomesTrue()) << i;
    }
}

TEST_F(TrueIndexTest, FindsTreesThatGrowDuringAWalk) {
    int walks = 0;
    IndexedFolders folders({root_},
                           [this, &walks](const auto& roots, const auto& observer, const auto& stop) {
                               auto found = indexOfFolders(roots, observer, stop);
                               if (++walks <= 5) makeFolder("walk" + std::to_string(walks) + "/a/b/c");
                               return found;
                           });
    ASSERT_TRUE(folders.becomesTrue());
    EXPECT_EQ(walks, 6);
    EXPECT_EQ(folders.index()->size(), 1U + 5 * 4);
}

TEST_F(TrueIndexTest, NoticesWhatIsRemovedOrSwappedDuringAWalk) {
    makeFolder("a/one");
    makeFolder("b/two");
    makeFolder("c");
    int walks = 0;
    IndexedFolders folders({root_},
                           [this, &walks](const auto& roots, const auto& observer, const auto& stop) {
                               auto found = indexOfFolders(roots, observer, stop);
                               ++walks;
                               if (walks == 2) {
                                   std::filesystem::rename(below("a"), below("c/x"));
                                   std::filesystem::rename(below("b"), below("a"));
                                   std::filesystem::rename(below("c/x"), below("b"));
                               }
                               if (walks == 3) std::filesystem::remove(below("c"));
                               return found;
                           });
    ASSERT_TRUE(folders.becomesTrue());
    makeFolder("go");
    ASSERT_TRUE(folders.becomesTrue());
    EXPECT_GE(walks, 4);
}

} // namespace brimwick
