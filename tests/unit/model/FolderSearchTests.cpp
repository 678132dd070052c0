#include "fakes/TemporaryFolder.h"
#include "model/FolderSearch.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace brimwick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Keeps what it was asked to show, with the number of results at that moment.
class RecordingPresenter : public SearchPresenter {
  public:
    bool isInPhantomMode() const override { return phantom; }
    void resultsWereReplaced() override { calls.emplace_back("replaced"); }
    void selectFirstResult() override { calls.emplace_back("first selected"); }
    void showNoFoldersFound() override { calls.emplace_back("no folders found"); }
    void hidePrompt() override { calls.emplace_back("prompt hidden"); }
    void showDefaultPrompt() override { calls.emplace_back("default prompt"); }

    bool phantom = false;
    std::vector<std::string> calls;
};

class FolderSearchTest : public testing::Test {
  protected:
    FolderSearchTest() {
        for (const char* name : {"Resumes", "Music", "Archives", "Présentations", ".Trash"})
            folder_.makeFolder("home/" + std::string(name));
        publishIndexOf({home_, home_ + "/.Trash"});
        search_.setPresenter(presenter_);
    }
    void publishIndexOf(const std::vector<std::string>& roots) {
        indexer_.setIndex(indexOfFolders(roots, [](std::string_view) {}, {}));
    }
    std::vector<std::string> namesFound() const {
        std::vector<std::string> names;
        for (const FolderNumber folder : search_.searchResults().entries)
            names.emplace_back(search_.searchResults().index->displayName(folder));
        return names;
    }

    TemporaryFolder folder_;
    const std::string home_ = folder_ / "home";
    FolderIndexer indexer_;
    RecordingPresenter presenter_;
    FolderSearch search_{indexer_};
};

} // namespace

TEST_F(FolderSearchTest, ListsTheMatchesByNameWhateverTheirCaseAndMarks) {
    search_.searchFor("re");
    EXPECT_THAT(namesFound(), ElementsAre("Présentations", "Resumes"));
    search_.searchFor("ÉS");
    EXPECT_THAT(namesFound(), ElementsAre("Archives", "Présentations", "Resumes"));
}

TEST_F(FolderSearchTest, ReplacesTheResultsThenSelectsTheFirstThenHidesThePrompt) {
    search_.searchFor("re");
    EXPECT_THAT(presenter_.calls, ElementsAre("replaced", "first selected", "prompt hidden"));
}

TEST_F(FolderSearchTest, ForgottenResultsKeepNoIndex) {
    search_.searchFor("re");
    const std::weak_ptr<const FolderIndex> searched = indexer_.index();
    publishIndexOf({home_});
    EXPECT_FALSE(searched.expired());
    search_.forgetResults();
    EXPECT_TRUE(searched.expired());
    EXPECT_THAT(namesFound(), IsEmpty());
    EXPECT_EQ(presenter_.calls.back(), "replaced");
}

TEST_F(FolderSearchTest, SaysWhenNoFolderMatches) {
    search_.searchFor("xyzzy");
    EXPECT_THAT(namesFound(), IsEmpty());
    EXPECT_THAT(presenter_.calls, ElementsAre("replaced", "first selected", "no folders found"));
}

TEST_F(FolderSearchTest, SaysThatNoFolderMatchesATextOfMarksAlone) {
    search_.searchFor("\u0301");
    EXPECT_THAT(presenter_.calls, ElementsAre("replaced", "first selected", "no folders found"));
}

TEST_F(FolderSearchTest, BringsTheDefaultPromptBackWhenTheTextIsErased) {
    search_.searchFor("xyzzy");
    presenter_.calls.clear();
    search_.searchFor("");
    EXPECT_THAT(namesFound(), IsEmpty());
    EXPECT_THAT(presenter_.calls, ElementsAre("replaced", "first selected", "default prompt"));
}

TEST_F(FolderSearchTest, ReplacesEarlierResults) {
    search_.searchFor("music");
    search_.searchFor("resum");
    EXPECT_THAT(namesFound(), ElementsAre("Resumes"));
    search_.searchFor("");
    EXPECT_THAT(namesFound(), IsEmpty());
}

TEST_F(FolderSearchTest, FindsTheTrashByTheNameThatItIsShownWith) {
    search_.searchFor("tra");
    EXPECT_THAT(namesFound(), ElementsAre("Trash"));
    EXPECT_TRUE(search_.entryAt(0).isTrashFolder());
    EXPECT_EQ(search_.entryAt(0).name(), "Trash");
    EXPECT_EQ(search_.entryAt(0).path(), home_ + "/.Trash");
}

TEST_F(FolderSearchTest, ShowsEveryFolderAsOneWithoutAskingTheDisk) {
    search_.searchFor("music");
    std::filesystem::remove_all(home_ + "/Music");
    EXPECT_EQ(search_.iconAt(0), (Icon{Icon::Source::Folder, {}}));
}

TEST_F(FolderSearchTest, ShowsTheTrashEmptyOrFull) {
    search_.searchFor("tra");
    EXPECT_EQ(search_.iconAt(0), (Icon{Icon::Source::Resource, "TrashIcon"}));
    std::filesystem::create_directory(home_ + "/.Trash/thrown away");
    EXPECT_EQ(search_.iconAt(0), (Icon{Icon::Source::Resource, "FullTrashIcon"}));
}

TEST_F(FolderSearchTest, ChangesNothingInPhantomMode) {
    search_.searchFor("music");
    presenter_.calls.clear();
    presenter_.phantom = true;
    search_.searchFor("resum");
    EXPECT_THAT(namesFound(), ElementsAre("Music"));
    EXPECT_THAT(presenter_.calls, IsEmpty());
}

TEST_F(FolderSearchTest, SearchesNothingBeforeAnybodyPresentsTheResults) {
    FolderSearch search(indexer_);
    search.searchFor("music");
    EXPECT_THAT(search.searchResults().entries, IsEmpty());
}

TEST_F(FolderSearchTest, KeepsItsResultsWhenANewIndexIsPublished) {
    search_.searchFor("music");
    publishIndexOf({});
    EXPECT_THAT(namesFound(), ElementsAre("Music"));
    EXPECT_EQ(search_.entryAt(0).path(), home_ + "/Music");
    search_.searchFor("music");
    EXPECT_THAT(namesFound(), IsEmpty());
}

TEST_F(FolderSearchTest, MakesTheEntryOfARowFromItsPath) {
    search_.searchFor("es");
    const BWSelectedFileOrFolder entry = search_.entryAt(1);
    EXPECT_EQ(entry.path(), home_ + "/Présentations");
    EXPECT_EQ(entry.name(), "Présentations");
    std::filesystem::remove(home_ + "/Présentations");
    EXPECT_FALSE(search_.entryAt(1).name().has_value());
}

TEST_F(FolderSearchTest, FindsNothingInAnEmptyIndex) {
    publishIndexOf({});
    search_.searchFor("a");
    EXPECT_THAT(presenter_.calls, ElementsAre("replaced", "first selected", "no folders found"));
}

} // namespace brimwick
