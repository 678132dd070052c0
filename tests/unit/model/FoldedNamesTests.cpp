#include "model/FoldedNames.h"
#include "model/NameFolding.h"
#include "model/NameOrder.h"
#include "model/NameScan.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <hwy/highway.h>

#include <algorithm>
#include <cstdint>
#include <optional>
#include <random>
#include <string>
#include <vector>

namespace brimwick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Subfolders of a root that has no name itself.
class Names {
  public:
    explicit Names(const std::vector<std::string>& names) {
        folders_.addRoot("/gone", "");
        for (const std::string& name : names) folders_.addSubfolder(0, name);
        order_ = foldersByName(folders_);
        folded_.emplace(folders_, order_);
    }

    std::vector<FolderNumber> find(const std::string& folded) const {
        std::vector<FolderNumber> found;
        folded_->find(folded, found);
        return found;
    }
    std::vector<FolderNumber> findOneByOne(const std::string& folded) const {
        std::vector<FolderNumber> found;
        for (const FolderNumber folder : order_)
            if (foldedName(folders_.displayName(folder)).find(folded) != std::string::npos)
                found.push_back(folder);
        return found;
    }
    const FoldedNames& folded() const { return *folded_; }

  private:
    FolderTree folders_;
    std::vector<FolderNumber> order_;
    std::optional<FoldedNames> folded_;
};

std::string randomText(std::mt19937& random, std::size_t longest) {
    std::string text(1 + random() % longest, '\0');
    for (char& letter : text) letter = "abcc\xC3\xA9 "[random() % 7];
    return text;
}

/// With each kind of vector instructions that this processor has.
class FoldedNamesTest : public testing::TestWithParam<std::int64_t> {
  protected:
    FoldedNamesTest() { use(GetParam()); }
    FoldedNamesTest(const FoldedNamesTest&) = delete;
    FoldedNamesTest& operator=(const FoldedNamesTest&) = delete;
    ~FoldedNamesTest() override { use(0); }

  private:
    static void use(std::int64_t target) {
        hwy::SetSupportedTargetsForTest(target);
        hwy::GetChosenTarget().Update(hwy::SupportedTargets());
    }
};

INSTANTIATE_TEST_SUITE_P(Instructions, FoldedNamesTest,
                         testing::ValuesIn(hwy::SupportedAndGeneratedTargets()),
                         [](const auto& target) { return std::string(hwy::TargetName(target.param)); });

} // namespace

TEST_P(FoldedNamesTest, FindsAllThatASlowSearchFinds) {
    std::mt19937 random(7);
    for (int round = 0; round < 60; ++round) {
        std::vector<std::string> list(1 + random() % 300);
        for (std::string& name : list) name = randomText(random, round % 3 == 0 ? 90 : 12);
        const Names names(list);
        for (int query = 0; query < 60; ++query) {
            const std::string text = foldedName(randomText(random, query % 10 == 0 ? 70 : 5));
            if (text.empty()) continue;
            EXPECT_EQ(names.find(text), names.findOneByOne(text)) << '"' << text << '"';
        }
    }
}

TEST_P(FoldedNamesTest, FindsAWholeNameWhereverItLies) {
    for (std::size_t length = 1; length < 150; ++length) {
        std::vector<std::string> list;
        for (char first = 'a'; first <= 'f'; ++first) list.push_back(first + std::string(length - 1, 'x'));
        const Names names(list);
        for (std::size_t i = 0; i < list.size(); ++i)
            EXPECT_THAT(names.find(list[i]), ElementsAre(static_cast<FolderNumber>(i + 1))) << length;
        EXPECT_THAT(names.find(list.back() + "x"), IsEmpty());
    }
}

TEST_P(FoldedNamesTest, FindsANameOnceHoweverOftenItHoldsTheText) {
    const Names names({std::string(200, 'a'), "b", std::string(255, 'a')});
    EXPECT_THAT(names.find("a"), ElementsAre(1, 3));
    EXPECT_THAT(names.find("aa"), ElementsAre(1, 3));
    EXPECT_THAT(names.find("aaa"), ElementsAre(1, 3));
}

TEST_P(FoldedNamesTest, FindsNothingAcrossTheEndOfAName) {
    const Names names({"ab", "cd"});
    EXPECT_THAT(names.find("bc"), IsEmpty());
    EXPECT_THAT(names.find(std::string("b\0c", 3)), IsEmpty());
    EXPECT_THAT(names.find(std::string("\0", 1)), IsEmpty());
}

TEST_P(FoldedNamesTest, FindsMoreThanOneReadOfTheScanYields) {
    std::vector<std::string> list(20000);
    for (std::size_t i = 0; i < list.size(); ++i) list[i] = "n" + std::to_string(i);
    const Names names(list);
    EXPECT_EQ(names.find("n").size(), list.size());
    EXPECT_EQ(names.find("7"), names.findOneByOne("7"));
}

/// As many as several threads share.
TEST(FoldedNames, OfAMegabyteAreFoundEachOnceAndInOrder) {
    std::mt19937 random(11);
    std::vector<std::string> list(90'000);
    for (std::string& name : list) {
        name.resize(1 + random() % 32);
        for (char& letter : name) letter = static_cast<char>('a' + random() % 3);
    }
    const Names names(list);
    const std::string_view bytes = names.folded().bytes();
    ASSERT_GT(bytes.size(), 5U << 18U);
    for (const std::string text : {"a", "c", "ab", "abc", "cab", "bbbb", "abcabc", "d"})
        EXPECT_EQ(names.find(text), names.findOneByOne(text)) << text;

    // Whatever they are split at, the names about the middle are whole, and nobody's twice.
    const std::size_t start = bytes.rfind('\0', bytes.size() / 2 - 20'000) + 1;
    for (std::size_t name = start; name < bytes.size() / 2 + 20'000; name = bytes.find('\0', name) + 1) {
        const std::string text(bytes.data() + name);
        if (text.size() < 20) continue;
        EXPECT_THAT(names.find(text), testing::SizeIs(1)) << text;
    }
}

TEST(FoldedNames, OfNothingFindNothing) {
    EXPECT_THAT(Names({}).find("a"), IsEmpty());
    EXPECT_EQ(Names({}).folded().bytes(), "");
}

TEST(FoldedNames, ShowTheBytesThatAreSearched) {
    EXPECT_EQ(Names({"B", "a"}).folded().bytes(), std::string_view("b\0a\0", 4));
}

TEST(NameOrder, SortsByBytesAndEqualNamesByTheirPlace) {
    std::mt19937 random(3);
    FolderTree folders;
    folders.addRoot("/", "/");
    for (int i = 0; i < 30000; ++i) folders.addSubfolder(0, randomText(random, i % 2 == 0 ? 4 : 40));
    std::vector<FolderNumber> expected(folders.size());
    for (FolderNumber folder = 0; folder < folders.size(); ++folder) expected[folder] = folder;
    std::ranges::stable_sort(expected, {}, [&](FolderNumber folder) { return folders.displayName(folder); });
    EXPECT_EQ(foldersByName(folders), expected);
}

TEST(NameOrder, PutsANameBeforeThoseThatItBegins) {
    FolderTree folders;
    folders.addRoot("/gone", "");
    for (const char* name : {"abcdefgh\x01", "abcdefgh", "abcdefghi", "abcdefg", "Abcdefgh", "abcdefgh"})
        folders.addSubfolder(0, name);
    EXPECT_THAT(foldersByName(folders), ElementsAre(5, 4, 2, 6, 1, 3));
}

TEST(NameOrder, SortsNamesThatDifferFarBehindTheirStart) {
    const std::string longName(60000, 'x');
    FolderTree folders;
    folders.addRoot("/gone", "");
    for (const std::string& name : {longName + "b", longName, longName + "a", longName})
        folders.addSubfolder(0, name);
    EXPECT_THAT(foldersByName(folders), ElementsAre(2, 4, 3, 1));
}

TEST(NameOrder, TellsBytesAbove127FromThoseBelow) {
    FolderTree folders;
    folders.addRoot("/gone", "");
    for (const char* name : {"\xFF", "z", "\xC3\xA9"}) folders.addSubfolder(0, name);
    EXPECT_THAT(foldersByName(folders), ElementsAre(2, 3, 1));
}

} // namespace brimwick
