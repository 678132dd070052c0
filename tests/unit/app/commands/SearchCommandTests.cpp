#include "model/PreferencesStore.h"
#include "model/SupportFolder.h"

#include <gmock/gmock.h>

#include <algorithm>

#include "unit/app/commands/CommandTest.h"

namespace brimwick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class SearchCommandTest : public CommandTest {
  protected:
    SearchCommandTest() {
        for (const char* name : {"Cabinet/Résumé 2024", "Cabinet/Taxes", "Attic/old/resume"})
            home.makeFolder(name);
    }
    void storeFolders(const std::vector<std::string>& paths) const {
        std::filesystem::create_directories(supportFolder(home.path()));
        std::vector<BWSelectedFileOrFolder> folders;
        for (const std::string& path : paths)
            folders.push_back(BWSelectedFileOrFolder::fileOrFolderWithPath(path));
        PreferencesStore store(supportFolder(home.path()), Resources(BRIMWICK_RESOURCES), folders);
        store.savePreferences();
    }
    std::vector<std::string> filesInHome() const {
        std::vector<std::string> paths;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(home.path()))
            paths.push_back(entry.path().string());
        std::ranges::sort(paths);
        return paths;
    }
    std::string line(const std::string& name) const { return home / name + "\n"; }

    const std::string all_ = line("Cabinet/Résumé 2024") + line("Attic/old/resume");
};

TEST_F(SearchCommandTest, LetsTheProgramThatRunsAnswer) {
    running.answer = RequestResult{ExitCode::done, ""};
    running.prints = "/from/the/index\n";
    EXPECT_EQ(run({"search", "re\xFF"}), ExitCode::done);
    EXPECT_EQ(printed, "/from/the/index\n");
    ASSERT_EQ(running.requests.size(), 1U);
    EXPECT_EQ(running.requests[0].verb, "search");
    EXPECT_THAT(running.requests[0].arguments, ElementsAre("re\xFF", "lines"));
}

TEST_F(SearchCommandTest, PassesOnWhatTheProgramThatRunsSays) {
    running.answer = RequestResult{ExitCode::failed, "No folders found."};
    EXPECT_EQ(run({"search", "x", "--json"}), ExitCode::failed);
    EXPECT_THAT(complaints, ElementsAre("brimwick search: No folders found."));
    EXPECT_THAT(running.requests.at(0).arguments, ElementsAre("x", "json"));
}

TEST_F(SearchCommandTest, WalksTheFoldersOfThePreferencesWhenNoneRuns) {
    storeFolders({home / "Cabinet", home / "Attic"});
    const auto before = filesInHome();
    EXPECT_EQ(run({"search", "RESUME"}), ExitCode::done);
    EXPECT_EQ(printed, all_);
    EXPECT_THAT(complaints, IsEmpty());
    EXPECT_EQ(filesInHome(), before);
}

TEST_F(SearchCommandTest, MakesNoPreferencesWhereThereAreNone) {
    const auto before = filesInHome();
    EXPECT_EQ(run({"search", "resume"}), ExitCode::failed);
    EXPECT_THAT(complaints, ElementsAre("brimwick search: No folders found."));
    EXPECT_EQ(filesInHome(), before);
}

TEST_F(SearchCommandTest, LeavesDamagedPreferencesAloneAndSaysSo) {
    std::filesystem::create_directories(supportFolder(home.path()));
    std::ofstream(supportFolder(home.path()) + "/BrimwickPreferences.plist") << "no property list";
    const auto before = filesInHome();
    EXPECT_EQ(run({"search", "resume"}), ExitCode::failed);
    ASSERT_EQ(complaints.size(), 1U);
    EXPECT_THAT(complaints[0], testing::StartsWith("brimwick search: the preferences cannot be read: "));
    EXPECT_EQ(filesInHome(), before);
}

TEST_F(SearchCommandTest, SearchesGivenFoldersByItselfThoughTheProgramRuns) {
    running.answer = RequestResult{ExitCode::done, ""};
    EXPECT_EQ(run({"search", "resume", "--in", home / "Cabinet", home / "Attic/"}), ExitCode::done);
    EXPECT_EQ(printed, all_);
    EXPECT_THAT(running.requests, IsEmpty());
}

TEST_F(SearchCommandTest, OffersAGivenFolderItself) {
    EXPECT_EQ(run({"search", "taxes", "--in", home / "Cabinet/Taxes"}), ExitCode::done);
    EXPECT_EQ(printed, line("Cabinet/Taxes"));
}

TEST_F(SearchCommandTest, SearchesTheOtherFoldersWhenOneIsMissing) {
    const std::string file = home.makeFile("file");
    EXPECT_EQ(run({"search", "resume", "--in", home / "gone", home / "Attic", file}), ExitCode::failed);
    EXPECT_EQ(printed, line("Attic/old/resume"));
    EXPECT_THAT(complaints, ElementsAre("brimwick search: " + (home / "gone") + ": No such file or directory",
                                        "brimwick search: " + file + ": Not a directory"));
}

TEST_F(SearchCommandTest, SaysWhenNothingIsFound) {
    EXPECT_EQ(run({"search", "nothing of that kind", "--in", home.path()}), ExitCode::failed);
    EXPECT_EQ(printed, "");
    EXPECT_THAT(complaints, ElementsAre("brimwick search: No folders found."));
    EXPECT_EQ(run({"search", "", "--in", home.path(), "--json"}), ExitCode::failed);
    EXPECT_EQ(printed, "[]\n");
}

TEST_F(SearchCommandTest, SparesATerminalButNotAPipe) {
    home.makeFolder("Odd/a\nb");
    run({"search", "b", "--in", home / "Odd", "-0"});
    EXPECT_EQ(printed, home / "Odd/a\nb" + std::string(1, '\0'));
    printed.clear();
    isTerminal = true;
    run({"search", "b", "--in", home / "Odd"});
    EXPECT_EQ(printed, line("Odd/a?b"));
}

} // namespace
} // namespace brimwick
