#include "model/FolderIndex.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <vector>

namespace brimwick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// The root "/home/u" with these folders in it, numbered from 1.
FolderIndex indexOf(std::initializer_list<std::string_view> names) {
    FolderTree folders;
    folders.addRoot("/home/u", "u");
    for (const std::string_view name : names) folders.addSubfolder(0, name);
    return FolderIndex(std::move(folders));
}

std::vector<std::string> namesFound(const FolderIndex& index, std::string_view text) {
    std::vector<std::string> names;
    for (const FolderNumber folder : index.search(text)) names.emplace_back(index.displayName(folder));
    return names;
}

} // namespace

TEST(FolderIndex, WithoutFoldersFindsNothing) {
    const FolderIndex index;
    EXPECT_EQ(index.size(), 0U);
    EXPECT_THAT(index.search("a"), IsEmpty());
}

TEST(FolderIndex, KnowsThePathAndNameOfEveryFolder) {
    FolderTree folders;
    const FolderNumber home = folders.addRoot("/home/u", "u");
    const FolderNumber documents = folders.addSubfolder(home, "Documents");
    const FolderNumber taxes = folders.addSubfolder(documents, "Taxes");
    const FolderNumber top = folders.addRoot("/", "/");
    const FolderNumber usr = folders.addSubfolder(top, "usr");
    const FolderNumber trash = folders.addRoot("/home/u/.Trash", "Trash");
    const FolderNumber inTrash = folders.addSubfolder(trash, "old");
    const FolderIndex index(std::move(folders));

    EXPECT_EQ(index.size(), 7U);
    EXPECT_EQ(index.path(home), "/home/u");
    EXPECT_EQ(index.path(taxes), "/home/u/Documents/Taxes");
    EXPECT_EQ(index.displayName(taxes), "Taxes");
    EXPECT_EQ(index.path(top), "/");
    EXPECT_EQ(index.path(usr), "/usr");
    EXPECT_EQ(index.path(trash), "/home/u/.Trash");
    EXPECT_EQ(index.displayName(trash), "Trash");
    EXPECT_EQ(index.path(inTrash), "/home/u/.Trash/old");
}

TEST(FolderIndex, FindsNamesThatContainTheTextWhateverItsCaseAndMarks) {
    const FolderIndex index = indexOf({"Resumes", "Pictures", "Archives", "Présentations", "Music"});
    EXPECT_THAT(namesFound(index, "re"), ElementsAre("Pictures", "Présentations", "Resumes"));
    EXPECT_THAT(namesFound(index, "RÈS"), ElementsAre("Pictures", "Présentations", "Resumes"));
    EXPECT_THAT(namesFound(index, "archives"), ElementsAre("Archives"));
    EXPECT_THAT(namesFound(index, "archives of"), IsEmpty());
}

TEST(FolderIndex, SortsUpperCaseBeforeLowerCaseByPlainBytes) {
    const FolderIndex index = indexOf({"apple", "Zoo apple", "Apple", "École apple", "apple 10", "apple 9"});
    EXPECT_THAT(namesFound(index, "apple"),
                ElementsAre("Apple", "Zoo apple", "apple", "apple 10", "apple 9", "École apple"));
}

TEST(FolderIndex, SortsNamesThatBeginAlike) {
    const FolderIndex index = indexOf({"photos of b", "photos of a", "photos o", "photos of", "photos \xFF"});
    EXPECT_THAT(namesFound(index, "photos"),
                ElementsAre("photos o", "photos of", "photos of a", "photos of b", "photos \xFF"));
}

TEST(FolderIndex, KeepsEqualNamesInTheOrderOfTheIndex) {
    FolderTree folders;
    folders.addRoot("/z", "z");
    folders.addSubfolder(0, "same");
    folders.addSubfolder(0, "other");
    folders.addSubfolder(2, "same");
    folders.addRoot("/a", "a");
    folders.addSubfolder(4, "same");
    EXPECT_THAT(FolderIndex(std::move(folders)).search("same"), ElementsAre(1U, 3U, 5U));
}

TEST(FolderIndex, FindsAFolderOnceHoweverOftenItsNameContainsTheText) {
    EXPECT_THAT(indexOf({"banana", "bananana"}).search("an"), ElementsAre(1U, 2U));
}

TEST(FolderIndex, FindsNoTextThatSpansTwoNames) {
    const FolderIndex index = indexOf({"ab", "ac"});
    EXPECT_THAT(index.search("ba"), IsEmpty());
    EXPECT_THAT(index.search(std::string_view("b\0a", 3)), IsEmpty());
    EXPECT_THAT(index.search(std::string_view("\0", 1)), IsEmpty());
}

TEST(FolderIndex, FindsNothingForAnEmptyText) {
    EXPECT_THAT(indexOf({"a"}).search(""), IsEmpty());
}

TEST(FolderIndex, FindsNothingForATextOfMarksAlone) {
    EXPECT_THAT(indexOf({"e\u0301t\u0301"}).search("\u0301"), IsEmpty());
}

TEST(FolderIndex, NeverFindsANameOfMarksAlone) {
    const FolderIndex index = indexOf({"\u0301", "b"});
    EXPECT_THAT(index.search("b"), ElementsAre(2U));
    EXPECT_EQ(index.displayName(1), "\u0301");
}

TEST(FolderIndex, ListsButNeverFindsARootThatIsGone) {
    FolderTree folders;
    folders.addRoot("/gone", "");
    folders.addRoot("/gone", "gone");
    const FolderIndex index(std::move(folders));
    EXPECT_EQ(index.size(), 2U);
    EXPECT_EQ(index.path(0), "/gone");
    EXPECT_EQ(index.displayName(0), "");
    EXPECT_THAT(index.search("gone"), ElementsAre(1U));
}

TEST(FolderIndex, FindsTheTrashByTheNameThatItIsShownWith) {
    FolderTree folders;
    folders.addRoot("/home/u/.Trash", "Trash");
    const FolderIndex index(std::move(folders));
    EXPECT_THAT(namesFound(index, "tra"), ElementsAre("Trash"));
    EXPECT_THAT(index.search(".tra"), IsEmpty());
}

TEST(FolderIndex, FindsNamesInEveryScript) {
    const FolderIndex index = indexOf({"Straße", "İstanbul", "ofﬁce", "한국어", "資料", "Ωmega",
                                       "re\u0301sume\u0301", "कागज़", "📁 Photos", "ФАЙЛЫ"});
    EXPECT_THAT(index.search("STRASSE"), ElementsAre(1U));
    EXPECT_THAT(index.search("straß"), ElementsAre(1U));
    EXPECT_THAT(index.search("istanbul"), ElementsAre(2U));
    EXPECT_THAT(index.search("İST"), ElementsAre(2U));
    EXPECT_THAT(index.search("office"), ElementsAre(3U));
    EXPECT_THAT(index.search("국어"), ElementsAre(4U));
    EXPECT_THAT(index.search("하"), ElementsAre(4U));
    EXPECT_THAT(index.search("料"), ElementsAre(5U));
    EXPECT_THAT(index.search("ωM"), ElementsAre(6U));
    EXPECT_THAT(index.search("résumé"), ElementsAre(7U));
    EXPECT_THAT(index.search("sume"), ElementsAre(7U));
    EXPECT_THAT(index.search("काग"), ElementsAre(8U));
    EXPECT_THAT(index.search("📁"), ElementsAre(9U));
    EXPECT_THAT(index.search("файл"), ElementsAre(10U));
}

TEST(FolderIndex, FindsNamesThatAreNoText) {
    const FolderIndex index = indexOf({"Caf\xE9 du Nord", "line\nbreak"});
    EXPECT_THAT(index.search("caf"), ElementsAre(1U));
    EXPECT_THAT(index.search("du nord"), ElementsAre(1U));
    EXPECT_THAT(index.search("\xE9"), ElementsAre(1U));
    EXPECT_THAT(index.search("e\nb"), ElementsAre(2U));
}

} // namespace brimwick
