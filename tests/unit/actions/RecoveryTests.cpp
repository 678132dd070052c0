#include "actions/JournalLine.h"
#include "actions/Recovery.h"

#include <gmock/gmock.h>

#include <functional>

#include "unit/actions/FileFacts.h"

namespace brimwick {

namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

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

    static void copyTree(const std::string& from, const std::string& to) {
        std::filesystem::copy(from, to,
                              std::filesystem::copy_options::recursive |
                                  std::filesystem::copy_options::copy_symlinks);
    }
    void stage(const std::string& name) { copyTree(source / name, target / hiddenCopy); }
    void noteStaging(const std::string& name, bool isMove = true) {
        transfer.isMove = isMove;
        transfer.source = source / name;
        transfer.sourceFolderInode = statusOf(source.path()).st_ino;
        transfer.targetFolderInode = statusOf(target.path()).st_ino;
        transfer.staged = target / hiddenCopy;
        note(journalLineForStaging(transfer));
    }
    void noteNaming(const std::string& name) {
        transfer.copyInode = statusOf(target / hiddenCopy).st_ino;
        transfer.destination = target / name;
        transfer.completed = std::chrono::system_clock::now().time_since_epoch();
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
        std::ofstream(home / "journal", std::ios::app | std::ios::binary) << "1 " << line << "\n";
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

TEST_F(RecoveryTest, PutsRightWhatAnInterruptedRecoveryLeft) {
    noteStaging("tree");
    stage("tree");
    giveName("tree");
    // The first recovery took the source under another hidden name, and was killed.
    claim("tree");
    std::filesystem::remove(source / (hiddenSource + std::string("/sub/b")));
    EXPECT_THAT(recover(), ElementsAre(HasSubstr("Finished")));
    EXPECT_THAT(namesIn(source.path()), IsEmpty());
    expectTree(target / "tree");
}

} // namespace

} // namespace brimwick
