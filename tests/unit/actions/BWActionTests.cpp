#include "fakes/OrdinaryUser.h"

#include <gmock/gmock.h>
#include <sys/resource.h>

#include "unit/actions/ActionFixture.h"

namespace brimwick {

namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

/// The number that the next numbered name takes, which depends on the tests before.
int nextNumber() {
    const std::string path = BWAction::targetPathWithUniqueFileName("/no/such/folder/x");
    return std::stoi(path.substr(path.find('(') + 1)) + 1;
}

std::string numbered(const std::string& base, int number, const std::string& suffix = "") {
    return base + "(" + std::to_string(number) + ")" + suffix;
}

TEST_F(ActionTest, StartsAsAMoveWithoutFilesAndFolders) {
    const BWAction one({preferences, sounds, {journal, workRunner}, home.path()}, view);
    const BWAction other({preferences, sounds, {journal, workRunner}, home.path()}, view);
    EXPECT_EQ(one.actionType(), BWModeMove);
    EXPECT_THAT(one.sourceFiles(), IsEmpty());
    EXPECT_THAT(one.targetFiles(), IsEmpty());
    EXPECT_EQ(one.sourceFolder().path(), "");
    EXPECT_EQ(one.targetFolder().path(), "");
    EXPECT_EQ(&one.view(), &view);
    EXPECT_FALSE(one.uuid().empty());
    EXPECT_NE(one.uuid(), other.uuid());
    EXPECT_LE(one.dateAndTime(), other.dateAndTime());
    EXPECT_GT(one.dateAndTime(), std::chrono::system_clock::now() - std::chrono::minutes(1));
}

TEST_F(ActionTest, MovesFilesAndTellsOfEach) {
    home.makeFile("from/a", "1");
    home.makeFile("from/b", "2");
    BWAction move = action(BWModeMove, {"a", "b"});
    EXPECT_TRUE(move.performActionInDirection(forwards));
    EXPECT_THAT(namesIn(home / "from"), IsEmpty());
    EXPECT_EQ(TemporaryFolder::read(home / "to/b"), "2");
    EXPECT_THAT(service.texts(), ElementsAre("Moved file a to folder " + (home / "to"),
                                             "Moved file b to folder " + (home / "to")));
    EXPECT_THAT(pathsOf(move.targetFiles()), ElementsAre(home / "to/a", home / "to/b"));
    EXPECT_THAT(pathsOf(move.sourceFiles()), ElementsAre(home / "from/a", home / "from/b"));
    EXPECT_THAT(player.played, ElementsAre("Catapult.mp3"));
}

TEST_F(ActionTest, CopiesFilesAndTellsOfEach) {
    home.makeFile("from/a", "1");
    BWAction copy = action(BWModeCopy, {"a"});
    EXPECT_TRUE(copy.performActionInDirection(forwards));
    EXPECT_EQ(TemporaryFolder::read(home / "from/a"), "1");
    EXPECT_EQ(TemporaryFolder::read(home / "to/a"), "1");
    EXPECT_THAT(service.texts(), ElementsAre("Copied file a to folder " + (home / "to")));
    EXPECT_THAT(player.played, ElementsAre("Camera.mp3"));
}

TEST_F(ActionTest, AnyOtherTypeIsACopy) {
    home.makeFile("from/a");
    EXPECT_TRUE(action(-7, {"a"}).performActionInDirection(forwards));
    EXPECT_THAT(service.texts(), ElementsAre(StartsWith("Copied file a")));
    EXPECT_THAT(namesIn(home / "from"), ElementsAre("a"));
}

TEST_F(ActionTest, NumbersAFileWhoseNameIsTakenAndCountsOnForAnother) {
    home.makeFile("from/a.txt", "new");
    home.makeFile("to/a.txt", "old");
    const int number = nextNumber();
    BWAction move = action(BWModeMove, {"a.txt"});
    EXPECT_TRUE(move.performActionInDirection(forwards));
    EXPECT_EQ(TemporaryFolder::read(home / ("to/" + numbered("a", number, ".txt"))), "new");
    EXPECT_EQ(TemporaryFolder::read(home / "to/a.txt"), "old");
    EXPECT_THAT(pathsOf(move.targetFiles()), ElementsAre(home / ("to/" + numbered("a", number, ".txt"))));
    EXPECT_THAT(service.texts(), ElementsAre("Moved file a.txt to folder " + (home / "to")));

    home.makeFile("from/b", "new");
    home.makeFile("to/b", "old");
    EXPECT_TRUE(action(BWModeMove, {"b"}).performActionInDirection(forwards));
    EXPECT_THAT(namesIn(home / "to"), testing::IsSupersetOf({std::string("b"), numbered("b", number + 1)}));
}

TEST(UniqueFileName, TheFirstNumberOfAProcessIsOne) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            const bool one = BWAction::targetPathWithUniqueFileName("/no/such/a.txt") == "/no/such/a(1).txt";
            const bool two = BWAction::targetPathWithUniqueFileName("/no/such/b") == "/no/such/b(2)";
            std::_Exit(one && two ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
}

TEST_F(ActionTest, PutsTheNumberBeforeTheLastExtensionOnly) {
    const auto uniqueName = [](const std::string& name) {
        return BWAction::targetPathWithUniqueFileName("/no/such/" + name)
            .substr(std::string("/no/such/").size());
    };
    int number = nextNumber();
    EXPECT_EQ(uniqueName("README"), numbered("README", number++));
    EXPECT_EQ(uniqueName("archive.tar.gz"), numbered("archive.tar", number++, ".gz"));
    EXPECT_EQ(uniqueName(".hidden"), numbered(".hidden", number++));
    EXPECT_EQ(uniqueName(".hidden.txt"), numbered(".hidden", number++, ".txt"));
    EXPECT_EQ(uniqueName("dot at end."), numbered("dot at end.", number++));
}

TEST_F(ActionTest, UniqueNamesPassOverWhateverLiesThere) {
    const int number = nextNumber();
    std::filesystem::create_symlink("nowhere", home / numbered("a", number));
    home.makeFolder(numbered("a", number + 1));
    EXPECT_EQ(BWAction::targetPathWithUniqueFileName(home / "a"), home / numbered("a", number + 2));
}

TEST_F(ActionTest, NumbersAFileMovedToWhereItLies) {
    home.makeFile("from/a", "x");
    const int number = nextNumber();
    EXPECT_TRUE(action(BWModeMove, {"a"}, "from", "from").performActionInDirection(forwards));
    EXPECT_THAT(namesIn(home / "from"), ElementsAre(numbered("a", number)));
}

TEST_F(ActionTest, UndoingAMovePutsTheFileBackAndNumbersItIfNeeded) {
    home.makeFile("from/a", "first");
    home.makeFile("from/b", "second");
    BWAction move = action(BWModeMove, {"a", "b"});
    ASSERT_TRUE(move.performActionInDirection(forwards));
    home.makeFile("from/b", "taken meanwhile");
    service.delivered.clear();
    player.played.clear();
    const int number = nextNumber();
    EXPECT_TRUE(move.performActionInDirection(backwards));
    EXPECT_EQ(TemporaryFolder::read(home / "from/a"), "first");
    EXPECT_EQ(TemporaryFolder::read(home / "from/b"), "taken meanwhile");
    EXPECT_EQ(TemporaryFolder::read(home / ("from/" + numbered("b", number))), "second");
    EXPECT_THAT(namesIn(home / "to"), IsEmpty());
    EXPECT_THAT(service.texts(), ElementsAre("Moved file a to folder " + (home / "from"),
                                             "Moved file b to folder " + (home / "from")));
    EXPECT_THAT(player.played, ElementsAre("Catapult.mp3"));
    EXPECT_THAT(pathsOf(move.sourceFiles()),
                ElementsAre(home / "from/a", home / ("from/" + numbered("b", number))));

    // The redo starts from where the undo put them.
    EXPECT_TRUE(move.performActionInDirection(forwards));
    EXPECT_THAT(namesIn(home / "to"), ElementsAre("a", numbered("b", number)));
    EXPECT_TRUE(move.performActionInDirection(-5));
    EXPECT_THAT(namesIn(home / "to"), IsEmpty());
}

TEST_F(ActionTest, UndoingPutsAllFilesIntoTheOneSourceFolder) {
    home.makeFolder("elsewhere");
    home.makeFile("from/a");
    home.makeFile("elsewhere/b");
    BWAction move = action(BWModeMove, {"a", "../elsewhere/b"});
    ASSERT_TRUE(move.performActionInDirection(forwards));
    ASSERT_TRUE(move.performActionInDirection(backwards));
    EXPECT_THAT(namesIn(home / "from"), ElementsAre("a", "b"));
    EXPECT_THAT(namesIn(home / "elsewhere"), IsEmpty());
}

TEST_F(ActionTest, UndoingACopyTrashesTheCopyAndARedoCopiesNothing) {
    home.makeFile("from/a.txt", "x");
    BWAction copy = action(BWModeCopy, {"a.txt"});
    ASSERT_TRUE(copy.performActionInDirection(forwards));
    service.delivered.clear();
    player.played.clear();
    const int number = nextNumber();
    EXPECT_TRUE(copy.performActionInDirection(backwards));
    EXPECT_THAT(namesIn(home / "to"), IsEmpty());
    EXPECT_EQ(TemporaryFolder::read(home / "from/a.txt"), "x");
    EXPECT_EQ(TemporaryFolder::read(home / ".Trash/a.txt"), "x");
    EXPECT_THAT(service.texts(), ElementsAre("Undid previous copy; trashed file a.txt"));
    EXPECT_THAT(player.played, ElementsAre("CrumplingPaper.mp3"));
    const std::string recorded = home / ("from/" + numbered("a", number, ".txt"));
    EXPECT_THAT(pathsOf(copy.sourceFiles()), ElementsAre(recorded));
    EXPECT_FALSE(TemporaryFolder::exists(recorded));

    service.delivered.clear();
    player.played.clear();
    EXPECT_TRUE(copy.performActionInDirection(forwards));
    EXPECT_THAT(copy.targetFiles(), IsEmpty());
    EXPECT_THAT(service.delivered, IsEmpty());
    EXPECT_THAT(player.played, ElementsAre("Camera.mp3"));
    EXPECT_THAT(namesIn(home / "to"), IsEmpty());
}

TEST_F(ActionTest, UndoingACopyWhoseNameIsInTheTrashFailsAndKeepsTheCopy) {
    home.makeFolder(".Trash");
    home.makeFile(".Trash/a", "old");
    home.makeFile("from/a", "x");
    BWAction copy = action(BWModeCopy, {"a"});
    ASSERT_TRUE(copy.performActionInDirection(forwards));
    service.delivered.clear();
    player.played.clear();
    EXPECT_FALSE(copy.performActionInDirection(backwards));
    EXPECT_THAT(service.texts(),
                ElementsAre("Error un-copying file: The Trash already holds an item of this name, \"" +
                            (home / ".Trash/a") + "\": File exists"));
    EXPECT_THAT(player.played, IsEmpty());
    EXPECT_EQ(TemporaryFolder::read(home / ".Trash/a"), "old");
    EXPECT_THAT(pathsOf(copy.targetFiles()), ElementsAre(home / "to/a"));
    EXPECT_EQ(TemporaryFolder::read(home / "to/a"), "x");
}

TEST_F(ActionTest, SkipsUnreadableFilesSilently) {
    home.makeFile("from/locked");
    setMode(home / "from/locked", 0);
    std::filesystem::create_symlink("nowhere", home / "from/dangling");
    home.makeFile("from/fine");
    setMode(home.path(), 0755);
    setMode(home / "from", 0777);
    setMode(home / "to", 0777);
    BWAction copy = action(BWModeCopy, {"locked", "dangling", "gone", "fine"});
    {
        const OrdinaryUser user;
        EXPECT_TRUE(copy.performActionInDirection(forwards));
    }
    EXPECT_THAT(service.texts(), ElementsAre("Copied file fine to folder " + (home / "to")));
    EXPECT_THAT(namesIn(home / "to"), ElementsAre("fine"));
    EXPECT_THAT(pathsOf(copy.targetFiles()), ElementsAre(home / "to/fine"));
}

TEST_F(ActionTest, WithNothingReadableItSucceedsSilentlyButForItsSound) {
    BWAction move = action(BWModeMove, {"gone", "gone too"});
    move.setTargetFiles({BWSelectedFileOrFolder::fileOrFolderWithPath(home / "to/old")});
    EXPECT_TRUE(move.performActionInDirection(forwards));
    EXPECT_THAT(service.delivered, IsEmpty());
    EXPECT_THAT(player.played, ElementsAre("Catapult.mp3"));
    EXPECT_THAT(move.targetFiles(), IsEmpty());
}

TEST_F(ActionTest, StopsAtTheFirstFileThatFails) {
    home.makeFile("from/1");
    home.makeFolder("from/2/inside");
    home.makeFile("from/3");
    // A folder cannot move into itself.
    BWAction move = action(BWModeMove, {"1", "2", "3"}, "from", "from/2/inside");
    const auto before = pathsOf(move.sourceFiles());
    EXPECT_FALSE(move.performActionInDirection(forwards));
    const Names texts = service.texts();
    ASSERT_EQ(texts.size(), 2U);
    EXPECT_EQ(texts[0], "Moved file 1 to folder " + (home / "from/2/inside"));
    EXPECT_THAT(texts[1], StartsWith("Error moving file: "));
    EXPECT_THAT(texts[1], HasSubstr(home / "from/2"));
    EXPECT_THAT(namesIn(home / "from"), ElementsAre("2", "3"));
    EXPECT_THAT(namesIn(home / "from/2/inside"), ElementsAre("1"));
    EXPECT_EQ(pathsOf(move.sourceFiles()), before);
    EXPECT_THAT(move.targetFiles(), IsEmpty());
    EXPECT_THAT(player.played, IsEmpty());
}

TEST_F(ActionBetweenFileSystems, SkipsWhatAnItemBeforeHasTakenAlong) {
    home.makeFile("from/x");
    home.makeFolder("from/tree");
    home.makeFile("from/tree/a", "inside");
    BWAction move = actionTo(BWModeMove, {"x", "tree", "tree/a", "x"});
    EXPECT_TRUE(move.performActionInDirection(forwards));
    const std::string folder = other.path();
    EXPECT_THAT(service.texts(),
                ElementsAre("Moved file x to folder " + folder, "Moved file tree to folder " + folder));
    EXPECT_EQ(move.targetFiles().size(), 2U);
    EXPECT_EQ(TemporaryFolder::read(other / "tree/a"), "inside");
    EXPECT_THAT(namesIn(home / "from"), IsEmpty());
}

TEST_F(ActionTest, SkipsWhatAnItemBeforeHasTakenAlongThoughItsFolderWasJustLookedAt) {
    home.makeFolder("from/tree");
    home.makeFile("from/tree/a");
    home.makeFile("from/tree/b");
    BWAction move = action(BWModeMove, {"tree/a", "tree", "tree/b"});
    EXPECT_TRUE(move.performActionInDirection(forwards));
    EXPECT_EQ(move.targetFiles().size(), 2U);
    EXPECT_THAT(namesIn(home / "to"), ElementsAre("a", "tree"));
    EXPECT_THAT(namesIn(home / "to/tree"), ElementsAre("b"));
}

TEST_F(ActionTest, FailsWhenNoMoreFoldersCanBeOpened) {
    home.makeFile("from/x");
    rlimit before{};
    require(getrlimit(RLIMIT_NOFILE, &before) == 0, "getrlimit");
    for (const Mode type : {BWModeCopy, BWModeMove}) {
        BWAction made = action(type, {"x"});
        const int next = dup(STDERR_FILENO);
        close(next);
        const rlimit none{static_cast<rlim_t>(next), before.rlim_max};
        require(setrlimit(RLIMIT_NOFILE, &none) == 0, "setrlimit");
        EXPECT_FALSE(made.performActionInDirection(forwards));
        require(setrlimit(RLIMIT_NOFILE, &before) == 0, "setrlimit");
        EXPECT_THAT(service.texts().back(), HasSubstr("Too many open files"));
        EXPECT_THAT(namesIn(home / "from"), ElementsAre("x"));
    }
}

TEST_F(ActionBetweenFileSystems, CopiesAFileThatIsNamedTwiceTwice) {
    home.makeFile("from/x", "text");
    BWAction copy = actionTo(BWModeCopy, {"x", "x"});
    EXPECT_TRUE(copy.performActionInDirection(forwards));
    ASSERT_EQ(copy.targetFiles().size(), 2U);
    for (const std::string& path : pathsOf(copy.targetFiles()))
        EXPECT_EQ(TemporaryFolder::read(path), "text");
    EXPECT_EQ(namesIn(other.path()).size(), 2U);
}

TEST_F(ActionBetweenFileSystems, TakesFilesFromMoreFoldersThanCanBeHeldOpen) {
    rlimit before{};
    require(getrlimit(RLIMIT_NOFILE, &before) == 0, "getrlimit");
    const rlimit lower{100, before.rlim_max};
    require(setrlimit(RLIMIT_NOFILE, &lower) == 0, "setrlimit");
    Names files;
    for (int number = 0; number < 200; ++number) {
        home.makeFolder("from/" + std::to_string(number));
        files.push_back(std::to_string(number) + "/file " + std::to_string(number));
        home.makeFile("from/" + files.back());
    }
    for (const Mode type : {BWModeCopy, BWModeMove}) {
        BWAction many = actionTo(type, files);
        EXPECT_TRUE(many.performActionInDirection(forwards));
        EXPECT_EQ(many.targetFiles().size(), files.size());
    }
    require(setrlimit(RLIMIT_NOFILE, &before) == 0, "setrlimit");
}

/// As a user who cancels at once.
class CancellingWorkRunner : public WorkRunner {
  public:
    void run(const FileWork& work) override {
        title = work.title;
        work.progress.cancel();
        work.perform();
        work.report();
    }
    std::string title;
};

TEST_F(ActionTest, CancelledLeavesTheItemInWorkAndTheRestAsTheyAre) {
    home.makeFile("from/a");
    home.makeFile("from/b");
    for (const Mode type : {BWModeMove, BWModeCopy}) {
        CancellingWorkRunner cancelling;
        BWAction cancelled = runBy(cancelling, action(type, {"a", "b"}));
        service.delivered.clear();
        EXPECT_FALSE(cancelled.performActionInDirection(forwards));
        EXPECT_EQ(cancelling.title, type == BWModeMove ? "Moving to to" : "Copying to to");
        const std::string error =
            type == BWModeMove ? "Error moving file: Could not move" : "Error copying file: Could not copy";
        EXPECT_THAT(service.texts(), ElementsAre(AllOf(StartsWith(error + " \"" + (home / "from/a") +
                                                                  "\" to \"" + (home / "to")),
                                                       testing::EndsWith("\": Operation canceled"))));
        EXPECT_THAT(namesIn(home / "to"), IsEmpty());
        EXPECT_THAT(namesIn(home / "from"), ElementsAre("a", "b"));
        EXPECT_THAT(cancelled.targetFiles(), IsEmpty());
        EXPECT_THAT(player.played, IsEmpty());
    }
}

TEST_F(ActionTest, TellsWhyACopyFailed) {
    home.makeFile("from/a");
    BWAction copy = action(BWModeCopy, {"a"}, "from", "gone");
    EXPECT_FALSE(copy.performActionInDirection(forwards));
    EXPECT_THAT(service.texts(), ElementsAre("Error copying file: Could not open the folder \"" +
                                             (home / "gone") + "\": No such file or directory"));
}

TEST_F(ActionTest, PlaysTheTrashSoundForAnyFolderCalledTrash) {
    home.makeFolder(".Trash");
    home.makeFolder("Trash");
    home.makeFolder("trash");
    for (const char* name : {"a", "b", "c"}) home.makeFile(std::string("from/") + name);
    EXPECT_TRUE(action(BWModeMove, {"a"}, "from", ".Trash").performActionInDirection(forwards));
    EXPECT_TRUE(action(BWModeMove, {"b"}, "from", "Trash").performActionInDirection(forwards));
    EXPECT_TRUE(action(BWModeCopy, {"c"}, "from", "Trash").performActionInDirection(forwards));
    EXPECT_TRUE(action(BWModeMove, {"c"}, "from", "trash").performActionInDirection(forwards));
    EXPECT_THAT(player.played, ElementsAre("CrumplingPaper.mp3", "CrumplingPaper.mp3", "CrumplingPaper.mp3",
                                           "Catapult.mp3"));
}

TEST_F(ActionTest, EachTypeIsSilentWhenItsSoundIsOff) {
    home.makeFolder("Trash");
    for (const char* name : {"a", "b"}) home.makeFile(std::string("from/") + name);
    setPreference("NotificationSoundOnMove", false);
    EXPECT_TRUE(action(BWModeMove, {"a"}, "from", "Trash").performActionInDirection(forwards));
    EXPECT_TRUE(action(BWModeMove, {"b"}).performActionInDirection(forwards));
    EXPECT_THAT(player.played, IsEmpty());
    EXPECT_TRUE(action(BWModeCopy, {"b"}, "to", "from").performActionInDirection(forwards));
    EXPECT_THAT(player.played, ElementsAre("Camera.mp3"));

    setPreference("NotificationSoundOnMove", true);
    setPreference("NotificationSoundOnCopy", false);
    EXPECT_TRUE(action(BWModeCopy, {"b"}, "to", "Trash").performActionInDirection(forwards));
    BWAction undone = action(BWModeCopy, {"b"});
    undone.setTargetFiles(undone.sourceFiles());
    EXPECT_TRUE(undone.performActionInDirection(backwards));
    EXPECT_THAT(player.played, ElementsAre("Camera.mp3"));
}

TEST_F(ActionTest, MovesNamesOfAnyBytes) {
    const Names names = {"-n", "a\nb", "\xff"};
    for (const std::string& name : names) home.makeFile("from/" + name, name);
    EXPECT_TRUE(action(BWModeMove, names).performActionInDirection(forwards));
    EXPECT_EQ(namesIn(home / "to"), names);
}

} // namespace

} // namespace brimwick
