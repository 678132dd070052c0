#include "actions/CompareTrees.h"
#include "actions/JournalLine.h"
#include "actions/Recovery.h"
#include "actions/RemoveVerified.h"

#include <gmock/gmock.h>

#include <functional>

#include "unit/actions/FileFacts.h"

namespace brimwick {

namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

constexpr const char* hiddenCopy = ".brimwick-1-2.part";
constexpr const char* hiddenSource = ".brimwick-1-3.moved";

/// Puts files where a killed transfer leaves them, and notes what it would have noted.
class RecoveryTest : public testing::Test {
  protected:
    RecoveryTest() {
        source.makeFolder("tree/sub");
        source.makeFile("tree/a", "first");
        source.makeFile("tree/sub/b", "second");
        require(symlink("nowhere", (source / "tree/link").c_str()) == 0, "symlink");
    }

    static FolderMark markOf(const std::string& folder) {
        const FileDescriptor descriptor(open(folder.c_str(), O_PATH | O_CLOEXEC));
        return FolderMark::of(descriptor.get()).value();
    }
    static void copyTree(const std::string& from, const std::string& to) {
        std::filesystem::copy(from, to,
                              std::filesystem::copy_options::recursive |
                                  std::filesystem::copy_options::copy_symlinks);
    }
    void stage(const std::string& name) { copyTree(source / name, target / hiddenCopy); }
    void noteStaging(const std::string& name, bool isMove = true) {
        transfer.isMove = isMove;
        transfer.source = source / name;
        transfer.sourceInode = statusOf(source / name).st_ino;
        transfer.sourceFolder = markOf(source.path());
        transfer.targetFolder = markOf(target.path());
        transfer.staged = target / hiddenCopy;
        note(journalLineForStaging(transfer));
    }
    void noteNaming(const std::string& name) {
        transfer.copyInode = statusOf(target / hiddenCopy).st_ino;
        transfer.destination = target / name;
        transfer.begun = std::chrono::system_clock::now().time_since_epoch();
        note(journalLineForNaming(transfer));
    }
    void giveName(const std::string& name) {
        noteNaming(name);
        std::filesystem::rename(target / hiddenCopy, target / name);
    }
    void claim(const std::string& name) {
        transfer.claimed = source / hiddenSource;
        note(journalLineForClaiming(transfer));
        std::filesystem::rename(source / name, source / hiddenSource);
    }
    void note(const std::string& line) {
        std::ofstream(home / "journal", std::ios::app | std::ios::binary) << number << ' ' << line << "\n";
    }
    /// Up to the point at which the source has its hidden name.
    void moveUpToTheRemoval(const std::string& name) {
        noteStaging(name);
        stage(name);
        giveName(name);
        claim(name);
    }

    Names recover() {
        FileJournal journal(home / "journal");
        return recoverInterrupted(journal, {});
    }
    /// Whether the next start would find something to put right.
    bool isOpen() const { return !FileJournal(home / "journal").interrupted().empty(); }
    void expectTree(const std::string& path) const {
        EXPECT_THAT(namesIn(path), ElementsAre("a", "link", "sub"));
        EXPECT_EQ(TemporaryFolder::read(path + "/a"), "first");
        EXPECT_EQ(TemporaryFolder::read(path + "/sub/b"), "second");
    }

    TemporaryFolder home;
    TemporaryFolder source;
    TemporaryFolder target{otherFileSystem()};
    InterruptedTransfer transfer;
    int number = 1; ///< of the transfer in the journal
};

TEST_F(RecoveryTest, HasNothingToDoAfterACleanEnd) {
    EXPECT_THAT(recover(), IsEmpty());
    noteStaging("tree");
    note("end");
    EXPECT_THAT(recover(), IsEmpty());
    expectTree(source / "tree");
}

TEST_F(RecoveryTest, RemovesAHalfMadeCopy) {
    for (const bool isMove : {true, false}) {
        noteStaging("tree", isMove);
        target.makeFolder(hiddenCopy + std::string("/sub"));
        target.makeFile(hiddenCopy + std::string("/a"), "fir");
        setMode(target / (hiddenCopy + std::string("/sub")), 0500);
        EXPECT_THAT(recover(),
                    ElementsAre("Cleaned up after an interrupted " + std::string(isMove ? "move" : "copy") +
                                " of file tree, which is still in folder " + source.path()));
        EXPECT_THAT(namesIn(target.path()), IsEmpty());
        expectTree(source / "tree");
        EXPECT_FALSE(isOpen());
    }
}

TEST_F(RecoveryTest, RemovesACompleteCopyThatHasNoNameYet) {
    noteStaging("tree");
    stage("tree");
    noteNaming("tree");
    EXPECT_THAT(recover(), ElementsAre(HasSubstr("Cleaned up")));
    EXPECT_THAT(namesIn(target.path()), IsEmpty());
    expectTree(source / "tree");
}

TEST_F(RecoveryTest, SaysNothingWhenTheCopyWasNotBegun) {
    noteStaging("tree");
    EXPECT_THAT(recover(), IsEmpty());
    expectTree(source / "tree");
    EXPECT_FALSE(isOpen());
}

TEST_F(RecoveryTest, KeepsACopyOfWhatIsGone) {
    noteStaging("tree");
    stage("tree");
    std::filesystem::remove_all(source / "tree");
    EXPECT_THAT(recover(),
                ElementsAre(AllOf(HasSubstr("Kept \"" + (target / hiddenCopy)), HasSubstr("is gone"))));
    expectTree(target / hiddenCopy);
    EXPECT_FALSE(isOpen());
}

TEST_F(RecoveryTest, KeepsACopyWithSomethingThatIsNowhereElse) {
    const std::vector<std::function<void()>> changes = {
        [&] { source.makeFile("tree/a", "other"); },
        [&] { source.makeFile("tree/a", "firs"); },
        [&] { std::filesystem::remove(source / "tree/sub/b"); },
        [&] { target.makeFile(hiddenCopy + std::string("/new"), "x"); },
        [&] {
            std::filesystem::remove(source / "tree/link");
            require(symlink("elsewhere", (source / "tree/link").c_str()) == 0, "symlink");
        },
        [&] {
            std::filesystem::remove(source / "tree/a");
            source.makeFolder("tree/a");
        },
    };
    copyTree(source / "tree", source / "as it was");
    for (std::size_t i = 0; i < changes.size(); ++i) {
        noteStaging("tree");
        stage("tree");
        changes[i]();
        EXPECT_THAT(recover(), ElementsAre(AllOf(HasSubstr("Kept"), HasSubstr("is not the same")))) << i;
        EXPECT_EQ(TemporaryFolder::read(target / (hiddenCopy + std::string("/a"))), "first") << i;
        EXPECT_EQ(TemporaryFolder::read(target / (hiddenCopy + std::string("/sub/b"))), "second") << i;
        std::filesystem::remove_all(target / hiddenCopy);
        std::filesystem::remove_all(source / "tree");
        copyTree(source / "as it was", source / "tree");
    }
}

TEST_F(RecoveryTest, OfACopyThatHasItsNameChangesNothing) {
    noteStaging("tree", false);
    stage("tree");
    giveName("tree");
    EXPECT_THAT(recover(), IsEmpty());
    expectTree(source / "tree");
    expectTree(target / "tree");
}

TEST_F(RecoveryTest, FinishesAMoveWhoseCopyHasItsName) {
    noteStaging("tree");
    stage("tree");
    giveName("tree(1)");
    EXPECT_THAT(recover(),
                ElementsAre("Finished an interrupted move of file tree to folder " + target.path()));
    EXPECT_THAT(namesIn(source.path()), IsEmpty());
    expectTree(target / "tree(1)");
    EXPECT_FALSE(isOpen());
}

TEST_F(RecoveryTest, FinishesAMoveOfAFile) {
    source.makeFile("letter", "text");
    moveUpToTheRemoval("letter");
    EXPECT_THAT(recover(), ElementsAre(HasSubstr("Finished")));
    EXPECT_THAT(namesIn(source.path()), ElementsAre("tree"));
    EXPECT_EQ(TemporaryFolder::read(target / "letter"), "text");
}

TEST_F(RecoveryTest, FinishesARemovalThatWasBegun) {
    moveUpToTheRemoval("tree");
    std::filesystem::remove(source / (hiddenSource + std::string("/a")));
    EXPECT_THAT(recover(), ElementsAre(HasSubstr("Finished")));
    EXPECT_THAT(namesIn(source.path()), IsEmpty());
    expectTree(target / "tree");
}

TEST_F(RecoveryTest, SaysNothingWhenOnlyTheLastNoteIsMissing) {
    moveUpToTheRemoval("tree");
    std::filesystem::remove_all(source / hiddenSource);
    EXPECT_THAT(recover(), IsEmpty());
    expectTree(target / "tree");
    EXPECT_FALSE(isOpen());
}

TEST_F(RecoveryTest, KeepsBothWhenTheSourceChangedAfterTheCopy) {
    const std::vector<std::function<void()>> changes = {
        [&] { source.makeFile("tree/a", "after"); },
        [&] { source.makeFile("tree/new", "x"); },
        [&] { setMode(source / "tree/a", 0600); },
        [&] {
            setTimes(source / "tree/a", {5, 6}, {7, 8});
        },
    };
    copyTree(source / "tree", source / "as it was");
    for (std::size_t i = 0; i < changes.size(); ++i) {
        noteStaging("tree");
        stage("tree");
        giveName("tree");
        waitForAnotherTime();
        changes[i]();
        EXPECT_THAT(recover(), ElementsAre(AllOf(HasSubstr("Did not finish"), HasSubstr("is not the same"),
                                                 HasSubstr("still in folder " + source.path()))))
            << i;
        EXPECT_TRUE(TemporaryFolder::exists(source / "tree/sub/b")) << i;
        expectTree(target / "tree");
        EXPECT_FALSE(isOpen());
        std::filesystem::remove_all(target / "tree");
        std::filesystem::remove_all(source / "tree");
        copyTree(source / "as it was", source / "tree");
    }
}

TEST_F(RecoveryTest, GivesTheSourceItsNameBackWhenTheCopyIsNotTheSame) {
    moveUpToTheRemoval("tree");
    target.makeFile("tree/a", "edited in the target");
    EXPECT_THAT(recover(), ElementsAre(HasSubstr("Did not finish")));
    EXPECT_THAT(namesIn(source.path()), ElementsAre("tree"));
    expectTree(source / "tree");
    EXPECT_EQ(TemporaryFolder::read(target / "tree/a"), "edited in the target");
}

TEST_F(RecoveryTest, GivesTheSourceItsNameBackWhenTheCopyIsGone) {
    for (const bool another : {false, true}) {
        moveUpToTheRemoval("tree");
        std::filesystem::rename(target / "tree", target / "elsewhere");
        if (another) copyTree(target / "elsewhere", target / "tree");
        EXPECT_THAT(recover(), ElementsAre(AllOf(HasSubstr("Did not finish"), HasSubstr("not in folder"))));
        expectTree(source / "tree");
        EXPECT_THAT(namesIn(source.path()), ElementsAre("tree"));
        std::filesystem::remove_all(target / "tree");
        std::filesystem::remove_all(target / "elsewhere");
    }
}

TEST_F(RecoveryTest, ReplacesNothingWhenItGivesANameBack) {
    moveUpToTheRemoval("tree");
    target.makeFile("tree/a", "edited");
    source.makeFile("tree", "somebody's new file");
    EXPECT_THAT(recover(), ElementsAre(HasSubstr(source / hiddenSource)));
    EXPECT_EQ(TemporaryFolder::read(source / "tree"), "somebody's new file");
    expectTree(source / hiddenSource);
    // Once the name is free, it gets it.
    std::filesystem::remove(source / "tree");
    EXPECT_THAT(recover(), ElementsAre(HasSubstr("Did not finish")));
    expectTree(source / "tree");
    EXPECT_FALSE(isOpen());
}

TEST_F(RecoveryTest, LeavesAFolderThatIsNotThereToALaterStart) {
    for (const bool isSource : {true, false}) {
        const TemporaryFolder& gone = isSource ? source : target;
        for (const bool placeIsThere : {true, false}) {
            noteStaging("tree");
            stage("tree");
            std::filesystem::rename(gone.path(), gone.path() + "-away");
            // As an empty mount point is.
            if (placeIsThere) std::filesystem::create_directory(gone.path());
            EXPECT_THAT(recover(), IsEmpty());
            EXPECT_TRUE(isOpen());
            if (placeIsThere) std::filesystem::remove(gone.path());
            std::filesystem::rename(gone.path() + "-away", gone.path());
            EXPECT_THAT(recover(), ElementsAre(HasSubstr("Cleaned up")));
            EXPECT_FALSE(isOpen());
            expectTree(source / "tree");
        }
    }
}

TEST_F(RecoveryTest, IsLeftToTheNextStartWhenAskedToStop) {
    moveUpToTheRemoval("tree");
    std::stop_source stop;
    stop.request_stop();
    {
        FileJournal journal(home / "journal");
        EXPECT_THAT(recoverInterrupted(journal, stop.get_token()), IsEmpty());
    }
    EXPECT_TRUE(isOpen());
    expectTree(source / hiddenSource);
    EXPECT_THAT(recover(), ElementsAre(HasSubstr("Finished")));
}

TEST_F(RecoveryTest, FindsTheSourceUnderTheLastHiddenNameThatItWasToGet) {
    moveUpToTheRemoval("tree");
    // A recovery gave it back its name, took it under another hidden one and was killed.
    transfer.claimed = source / ".brimwick-7-7.moved";
    note(journalLineForClaiming(transfer));
    std::filesystem::rename(source / hiddenSource, transfer.claimed);
    EXPECT_THAT(recover(), ElementsAre(HasSubstr("Finished")));
    EXPECT_THAT(namesIn(source.path()), IsEmpty());
    expectTree(target / "tree");
}

TEST_F(RecoveryTest, TellsOfARemainderThatItIsOne) {
    moveUpToTheRemoval("tree");
    note(std::string(journalLineForRemoving));
    std::filesystem::remove(source / (hiddenSource + std::string("/a")));
    std::filesystem::rename(target / "tree", target / "renamed");
    EXPECT_THAT(recover(), ElementsAre(AllOf(HasSubstr("its copy is not in folder " + target.path()),
                                             HasSubstr("what is left of it is in folder " + source.path()))));
    EXPECT_THAT(namesIn(source / "tree"), ElementsAre("link", "sub"));
    expectTree(target / "renamed");
}

TEST_F(RecoveryTest, TakesNoOtherFileForTheSource) {
    noteStaging("tree");
    stage("tree");
    giveName("tree");
    std::filesystem::rename(source / "tree", source / "kept");
    copyTree(source / "kept", source / "tree");
    EXPECT_THAT(recover(), ElementsAre(HasSubstr("another file has its name now")));
    expectTree(source / "tree");
    expectTree(source / "kept");
}

TEST_F(RecoveryTest, TakesTheCopyForNoCopyOfItself) {
    noteStaging("tree");
    stage("tree");
    giveName("tree");
    // The folder of the source leads to that of the copy now, and says so of nothing.
    transfer.sourceInode = transfer.copyInode;
    transfer.sourceFolder = transfer.targetFolder;
    note(journalLineForStaging(transfer));
    note(journalLineForNaming(transfer));
    std::filesystem::rename(source.path(), source.path() + "-away");
    require(symlink(target.path().c_str(), source.path().c_str()) == 0, "symlink");
    EXPECT_THAT(recover(), ElementsAre(HasSubstr("Did not finish")));
    std::filesystem::remove(source.path());
    std::filesystem::rename(source.path() + "-away", source.path());
    expectTree(target / "tree");
    expectTree(source / "tree");
}

TEST_F(RecoveryTest, TellsOfAHiddenSourceWhoseTargetFolderIsNotThere) {
    moveUpToTheRemoval("tree");
    std::filesystem::rename(target.path(), target.path() + "-away");
    for (int start = 0; start < 2; ++start)
        EXPECT_THAT(recover(),
                    ElementsAre(AllOf(HasSubstr("Could not finish"), HasSubstr(source / hiddenSource))));
    std::filesystem::rename(target.path() + "-away", target.path());
    EXPECT_THAT(recover(), ElementsAre(HasSubstr("Finished")));
    expectTree(target / "tree");
    EXPECT_THAT(namesIn(source.path()), IsEmpty());
}

TEST_F(RecoveryTest, FinishesAMoveWhoseSourceWasAboutToGetItsHiddenName) {
    noteStaging("tree");
    stage("tree");
    giveName("tree");
    // As a file system without renames that do not replace leaves it.
    transfer.claimed = source.makeFolder(hiddenSource);
    note(journalLineForClaiming(transfer));
    EXPECT_THAT(recover(), ElementsAre(HasSubstr("Finished")));
    EXPECT_THAT(namesIn(source.path()), IsEmpty());
    expectTree(target / "tree");
}

TEST_F(RecoveryTest, GoesOnWithTheOthersAfterOneThatMustWait) {
    noteStaging("tree");
    stage("tree");
    std::ofstream(home / "journal", std::ios::app)
        << "2 move 1 1 1 1 1 /no/such/a /no/such/.brimwick-1-9.part\n";
    std::ofstream(home / "journal", std::ios::app)
        << "0 move 1 1 1 1 1 /no/such/a /no/such/.brimwick-1-8.part\n";
    EXPECT_THAT(recover(), ElementsAre(HasSubstr("Cleaned up")));
    EXPECT_EQ(FileJournal(home / "journal").interrupted().size(), 2U);
}

TEST_F(RecoveryTest, OfTwoMovesOfOneFileFinishesTheFirstAndSaysNothingOfTheOther) {
    source.makeFile("file", "content");
    for (; number <= 2; ++number) {
        noteStaging("file");
        stage("file");
        giveName("copy " + std::to_string(number));
    }
    EXPECT_THAT(recover(), ElementsAre(StartsWith("Finished an interrupted move of file file to folder")));
    EXPECT_FALSE(TemporaryFolder::exists(source / "file"));
    EXPECT_THAT(namesIn(target.path()), ElementsAre("copy 1", "copy 2"));
    EXPECT_FALSE(isOpen());
}

TEST_F(RecoveryTest, FinishesManyMovesAndTellsOfEachInItsOrder) {
    std::vector<std::string> expected;
    for (; number <= 250; ++number) {
        const std::string name = std::to_string(number);
        const bool changes = number % 100 == 50;
        source.makeFile(name, "content of " + name);
        noteStaging(name);
        stage(name);
        giveName(name);
        if (changes) source.makeFile(name, "changed afterwards");
        expected.push_back(changes ? "Did not finish an interrupted move of file " + name + ", because"
                                   : "Finished an interrupted move of file " + name + " to folder");
    }
    const Names told = recover();
    ASSERT_EQ(told.size(), expected.size());
    for (std::size_t i = 0; i < told.size(); ++i) EXPECT_THAT(told[i], StartsWith(expected[i]));
    EXPECT_THAT(namesIn(source.path()), ElementsAre("150", "250", "50", "tree"));
    EXPECT_EQ(namesIn(target.path()).size(), 250U);
    EXPECT_EQ(TemporaryFolder::read(target / "249"), "content of 249");
    EXPECT_FALSE(isOpen());
}

/// The copy may have gone while it was compared.
TEST_F(RecoveryTest, RemovesNothingWhenTheLastLookAtTheCopyFails) {
    copyTree(source / "tree", source / hiddenSource);
    const auto place = ItemPlace::open(source / "tree");
    ASSERT_TRUE(place);
    stage("tree");
    const auto same = compareTrees(
        {{place->folder.descriptor(), hiddenSource}, {AT_FDCWD, target / hiddenCopy}, FileMatch::Same, {}},
        {});
    ASSERT_TRUE(same);
    FileJournal journal;
    JournalEntry notes(journal, *place, 0, true);
    const auto gone = [] { return std::make_error_code(std::errc::no_such_file_or_directory); };
    const auto refused = removeClaimed(*place, hiddenSource, same->item, notes, gone);
    ASSERT_FALSE(refused);
    EXPECT_FALSE(refused.error().isPartlyRemoved);
    expectTree(source / hiddenSource);
    EXPECT_TRUE(removeClaimed(*place, hiddenSource, same->item, notes, [] { return std::error_code(); }));
    EXPECT_FALSE(TemporaryFolder::exists(source / hiddenSource));
}

} // namespace

} // namespace brimwick
