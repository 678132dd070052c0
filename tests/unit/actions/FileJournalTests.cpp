#include "actions/FileJournal.h"
#include "actions/JournalEntry.h"
#include "actions/JournalLine.h"

#include <gmock/gmock.h>
#include <sys/resource.h>

#include <csignal>

#include "unit/actions/FileFacts.h"

namespace brimwick {

namespace {

using testing::IsEmpty;
using testing::SizeIs;

InterruptedTransfer someMove() {
    return {.number = 0,
            .isMove = true,
            .source = "/from/a b\n\xff%20",
            .sourceInode = 10,
            .sourceFolder = {-1, 11},
            .targetFolder = {2, 12},
            .staged = "/to/.brimwick-1-2.part",
            .destination = "/to/a b\n\xff%20",
            .copyInode = 13,
            .begun = std::chrono::nanoseconds(1'700'000'000'123'456'789),
            .claimed = "/from/.brimwick-1-3.moved",
            .removing = false};
}

std::string lines(InterruptedTransfer transfer, const std::string& number) {
    transfer.number = std::stoull(number);
    return journalLinesOf(transfer);
}

void expectSame(const InterruptedTransfer& one, const InterruptedTransfer& other) {
    EXPECT_EQ(one.isMove, other.isMove);
    EXPECT_EQ(one.source, other.source);
    EXPECT_EQ(one.sourceInode, other.sourceInode);
    EXPECT_EQ(one.sourceFolder.fileSystem, other.sourceFolder.fileSystem);
    EXPECT_EQ(one.sourceFolder.inode, other.sourceFolder.inode);
    EXPECT_EQ(one.targetFolder.fileSystem, other.targetFolder.fileSystem);
    EXPECT_EQ(one.targetFolder.inode, other.targetFolder.inode);
    EXPECT_EQ(one.removing, other.removing);
    EXPECT_EQ(one.staged, other.staged);
    EXPECT_EQ(one.destination, other.destination);
    EXPECT_EQ(one.copyInode, other.copyInode);
    EXPECT_EQ(one.begun, other.begun);
    EXPECT_EQ(one.claimed, other.claimed);
}

TEST(JournalLines, AreReadAsTheyWereWrittenWhateverTheNames) {
    const auto transfers = readJournal(lines(someMove(), "7"));
    ASSERT_THAT(transfers, SizeIs(1));
    EXPECT_EQ(transfers[0].number, 7U);
    expectSame(transfers[0], someMove());
}

TEST(JournalLines, TellTheLastNameThatWasTried) {
    InterruptedTransfer later = someMove();
    later.destination = "/to/a(1)";
    const auto transfers = readJournal(lines(someMove(), "7") + "7 " + journalLineForNaming(later) + "\n");
    ASSERT_THAT(transfers, SizeIs(1));
    EXPECT_EQ(transfers[0].destination, "/to/a(1)");
}

TEST(JournalLines, TellWhetherTheRemovalMayHaveBegun) {
    InterruptedTransfer removing = someMove();
    removing.removing = true;
    EXPECT_TRUE(readJournal(lines(removing, "7")).at(0).removing);
}

/// Whatever else stands there, no visible file is ever taken for a leftover.
TEST(JournalLines, OfNamesThatAreNotHiddenOnesOfOursArePassedOver) {
    for (const std::string name : {"/from/a", "/elsewhere/.brimwick-1-3.moved", "/from/.brimwick-1-3.part"}) {
        InterruptedTransfer transfer = someMove();
        transfer.claimed = name;
        const auto transfers = readJournal(lines(transfer, "7"));
        ASSERT_THAT(transfers, SizeIs(1));
        EXPECT_EQ(transfers[0].claimed, "");
        transfer = someMove();
        transfer.staged = name;
        EXPECT_THAT(readJournal(lines(transfer, "7")), SizeIs(name.ends_with(".part") ? 1 : 0));
    }
}

TEST(JournalLines, OfATransferAtItsEndAreForgotten) {
    const auto transfers = readJournal(lines(someMove(), "1") + lines(someMove(), "2") + "1 end\n");
    ASSERT_THAT(transfers, SizeIs(1));
    EXPECT_EQ(transfers[0].number, 2U);
}

TEST(JournalLines, CutShortAnywhereAreReadAsFarAsTheyAreWhole) {
    const std::string whole = lines(someMove(), "1");
    const std::size_t first = whole.find('\n') + 1;
    for (std::size_t length = 0; length < whole.size(); ++length) {
        const auto transfers = readJournal(whole.substr(0, length));
        if (length < first) {
            EXPECT_THAT(transfers, IsEmpty()) << length;
            continue;
        }
        ASSERT_THAT(transfers, SizeIs(1)) << length;
        EXPECT_EQ(transfers[0].claimed, "") << length;
    }
}

TEST(JournalLines, ThatAreNoneArePassedOver) {
    const std::string junk[] = {"",
                                "\n\n",
                                "hello\n",
                                "1\n",
                                "x move 1 2 3 4 5 /a /.brimwick-1.part\n",
                                "1 move 1 2 3 4 5 /a /b\n",
                                "1 move 1 2 3 4 5 /a /.brimwick-1.moved\n",
                                "1 move 1 2 3 4 5 /a\n",
                                "1 move 1 2 3 x 5 /a /.brimwick-1.part\n",
                                "1 move 1 2 3 4 5 a .brimwick-1.part\n",
                                "1 move 1 2 3 4 5 /a%zz /.brimwick-1.part\n",
                                "1 name 5 6 /a\n",
                                "1 end\n",
                                std::string("\0\0\0\n", 4)};
    for (const std::string& text : junk) EXPECT_THAT(readJournal(text), IsEmpty()) << text;
    for (const std::string& text : junk)
        EXPECT_THAT(readJournal(text + lines(someMove(), "2")), SizeIs(1)) << text;
}

class Journal : public testing::Test {
  protected:
    std::string content() const { return TemporaryFolder::read(folder / "journal"); }
    static void begin(FileJournal& journal) {
        journal.note(journal.begin(), journalLineForStaging(someMove()));
    }

    TemporaryFolder folder;
};

TEST_F(Journal, HandsWhatWasUnderWayToTheNextRun) {
    {
        FileJournal journal(folder / "journal");
        EXPECT_THAT(journal.interrupted(), IsEmpty());
        begin(journal);
    }
    const FileJournal next(folder / "journal");
    ASSERT_THAT(next.interrupted(), SizeIs(1));
    EXPECT_EQ(next.interrupted()[0].source, someMove().source);
}

TEST_F(Journal, IsEmptyOnceNothingIsUnderWay) {
    FileJournal journal(folder / "journal");
    const auto one = journal.begin();
    const auto other = journal.begin();
    journal.note(one, journalLineForStaging(someMove()));
    journal.note(other, journalLineForStaging(someMove()));
    journal.write();
    EXPECT_THAT(readJournal(content()), SizeIs(2));
    journal.end(one);
    journal.write();
    EXPECT_THAT(readJournal(content()), SizeIs(1));
    journal.end(other);
    EXPECT_EQ(content(), "");
}

TEST_F(Journal, WritesItsNotesTogetherWhenToldToAndWhenItGoes) {
    {
        FileJournal journal(folder / "journal");
        begin(journal);
        EXPECT_EQ(content(), "");
        journal.write();
        EXPECT_THAT(readJournal(content()), SizeIs(1));
        begin(journal);
        EXPECT_THAT(readJournal(content()), SizeIs(1));
        journal.flush();
        EXPECT_THAT(readJournal(content()), SizeIs(2));
        begin(journal);
    }
    EXPECT_THAT(readJournal(content()), SizeIs(3));
}

TEST_F(Journal, KnowsWhenTheCopyWasNotYetBegun) {
    FileJournal journal(folder / "journal");
    const auto source = ItemPlace::open(folder / "a");
    ASSERT_TRUE(source);
    JournalEntry notes(journal, *source, 1, true);
    notes.keepOpen();
    const auto begun = std::chrono::system_clock::now().time_since_epoch();
    notes.staging(source->folder, ".brimwick-1-2.part");
    notes.naming(source->folder, 2, "b");
    notes.write();
    const auto noted = readJournal(content());
    ASSERT_THAT(noted, SizeIs(1));
    EXPECT_LE(noted[0].begun, begun);
}

TEST_F(Journal, LosesNothingThatWasWrittenWhenTheDiskIsFull) {
    FileJournal journal(folder / "journal");
    begin(journal);
    journal.write();
    rlimit former{};
    getrlimit(RLIMIT_FSIZE, &former);
    // There is room for one more line and a half.
    const rlimit narrow{content().size() * 5 / 2, former.rlim_max};
    const auto formerHandler = signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &narrow);
    begin(journal);
    begin(journal);
    journal.write();
    setrlimit(RLIMIT_FSIZE, &former);
    signal(SIGXFSZ, formerHandler);
    EXPECT_THAT(readJournal(content()), SizeIs(2));
    begin(journal);
    journal.write();
    EXPECT_THAT(readJournal(content()), SizeIs(3));
}

TEST_F(Journal, KeepsWhatCannotBePutRightYetThroughLaterTransfers) {
    {
        FileJournal journal(folder / "journal");
        begin(journal);
    }
    {
        FileJournal journal(folder / "journal");
        const auto number = journal.begin();
        EXPECT_NE(number, journal.interrupted()[0].number);
        journal.note(number, journalLineForStaging(someMove()));
        journal.end(number);
    }
    EXPECT_THAT(FileJournal(folder / "journal").interrupted(), SizeIs(1));
}

TEST_F(Journal, GoesOnAfterALineThatWasCutShort) {
    folder.makeFile("journal", "1 move 1 2 3 4 5 /a /.brimw");
    {
        FileJournal journal(folder / "journal");
        begin(journal);
    }
    EXPECT_THAT(FileJournal(folder / "journal").interrupted(), SizeIs(1));
}

TEST_F(Journal, ThatHasGrownIsWrittenAnewWithWhatWaits) {
    InterruptedTransfer waits = someMove();
    waits.number = 7;
    std::string grown = journalLinesOf(waits);
    while (grown.size() < 1'100'000) grown += "8 " + journalLineForStaging(waits) + "\n8 end\n";
    folder.makeFile("journal", grown);
    const FileJournal journal(folder / "journal");
    ASSERT_THAT(journal.interrupted(), SizeIs(1));
    EXPECT_EQ(content(), journalLinesOf(waits));
}

TEST_F(Journal, OfAnotherProcessIsNotTouched) {
    FileJournal first(folder / "journal");
    begin(first);
    const std::string before = content();
    {
        FileJournal second(folder / "journal");
        EXPECT_THAT(second.interrupted(), IsEmpty());
        begin(second);
        second.end(second.begin());
    }
    EXPECT_EQ(content(), before);
}

TEST_F(Journal, ThatCannotBeKeptStopsNothing) {
    folder.makeFolder("journal");
    for (const std::string& path :
         {folder / "journal", folder / "no/such/folder/journal", std::string("/dev/full")}) {
        FileJournal journal(path);
        begin(journal);
        journal.end(1);
        EXPECT_THAT(journal.interrupted(), IsEmpty()) << path;
    }
}

} // namespace

} // namespace brimwick
