#include "actions/CopyBatch.h"
#include "actions/CopyFolder.h"
#include "actions/FileJournal.h"
#include "actions/OpenFolders.h"
#include "actions/TransferProgress.h"
#include "fakes/OrdinaryUser.h"

#include <gmock/gmock.h>

#include <fstream>
#include <functional>

#include "unit/actions/FileFacts.h"

namespace brimwick {

namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

constexpr bool isMove = true;

void giveToOrdinaryUser(const std::string& folder) {
    constexpr uid_t nobody = 65534;
    if (geteuid() != 0) return;
    require(chown(folder.c_str(), nobody, nobody) == 0, folder);
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder))
        require(lchown(entry.path().c_str(), nobody, nobody) == 0, entry.path());
}

/// Several items at once, from one file system to another.
class CopyBatchTest : public testing::TestWithParam<bool> {
  protected:
    PlannedTransfer plan(const std::string& name) const {
        return {source / name, {target / name, {}, {}, {}}, 0};
    }
    std::vector<PlannedTransfer> plan(const Names& names) const {
        std::vector<PlannedTransfer> planned;
        for (const std::string& name : names) planned.push_back(plan(name));
        return planned;
    }
    Names makeFiles(int count) const {
        Names names;
        for (int number = 0; number < count; ++number) {
            names.push_back("file " + std::to_string(10 + number));
            source.makeFile(names.back(), "content of " + names.back());
        }
        return names;
    }
    auto transfer(
        const std::vector<PlannedTransfer>& planned, bool move,
        const std::function<void()>& meanwhile = [] {}) {
        FileJournal journal(home / "journal");
        auto batch = CopyBatch::plan(planned, move, {journal, progress, folders});
        if (!batch) return CopyBatch::Results{tl::unexpected(batch.error())};
        (*batch)->copyAll();
        meanwhile();
        auto results = (*batch)->finish();
        batch->reset();
        EXPECT_TRUE(folders.syncChanged());
        // All is at its end.
        EXPECT_EQ(TemporaryFolder::read(home / "journal"), "");
        return results;
    }

    TemporaryFolder home;
    TemporaryFolder source;
    TemporaryFolder target{otherFileSystem()};
    TransferProgress progress;
    OpenFolders folders;
};

/// Few items are flushed one by one, many together.
class SomeItems : public CopyBatchTest {
  protected:
    Names names = makeFiles(GetParam() ? 30 : 3);
};

INSTANTIATE_TEST_SUITE_P(Items, SomeItems, testing::Bool(),
                         [](const auto& info) { return info.param ? "Many" : "Few"; });

TEST_P(SomeItems, AreMoved) {
    const auto results = transfer(plan(names), isMove);
    ASSERT_THAT(results, SizeIs(names.size()));
    for (std::size_t i = 0; i < names.size(); ++i)
        EXPECT_EQ(results[i].value_or("failed"), target / names[i]);
    EXPECT_EQ(namesIn(target.path()), names);
    EXPECT_THAT(namesIn(source.path()), IsEmpty());
    for (const std::string& name : names)
        EXPECT_EQ(TemporaryFolder::read(target / name), "content of " + name);
}

TEST_P(SomeItems, AreCopied) {
    source.makeFolder("tree/sub");
    source.makeFile("tree/sub/a", "first");
    require(symlink("nowhere", (source / "u link").c_str()) == 0, "symlink");
    names.push_back("tree");
    names.push_back("u link");
    EXPECT_THAT(transfer(plan(names), !isMove), SizeIs(names.size()));
    EXPECT_EQ(namesIn(target.path()), names);
    EXPECT_EQ(namesIn(source.path()), names);
    EXPECT_EQ(TemporaryFolder::read(target / "tree/sub/a"), "first");
}

TEST_P(SomeItems, StopAtTheFirstThatCannotBeCopied) {
    std::filesystem::remove(source / names[1]);
    require(mkfifo((source / names[1]).c_str(), 0600) == 0, "mkfifo");
    const auto results = transfer(plan(names), isMove);
    ASSERT_THAT(results, SizeIs(2));
    EXPECT_TRUE(results[0]);
    EXPECT_THAT(results[1].error().description, HasSubstr("special file \"" + (source / names[1])));
    EXPECT_THAT(namesIn(target.path()), ElementsAre(names[0]));
    EXPECT_EQ(namesIn(source.path()), Names(names.begin() + 1, names.end()));
}

TEST_P(SomeItems, StopAtTheFirstWhoseNameIsTaken) {
    target.makeFile(names[2], "there before");
    const auto results = transfer(plan(names), isMove);
    ASSERT_THAT(results, SizeIs(3));
    EXPECT_EQ(results[2].error().code, std::errc::file_exists);
    EXPECT_THAT(namesIn(target.path()), ElementsAre(names[0], names[1], names[2]));
    EXPECT_EQ(TemporaryFolder::read(target / names[2]), "there before");
    EXPECT_EQ(namesIn(source.path()), Names(names.begin() + 2, names.end()));
}

TEST_P(SomeItems, StopAtTheFirstThatIsGone) {
    std::filesystem::remove(source / names[0]);
    const auto results = transfer(plan(names), isMove);
    ASSERT_THAT(results, SizeIs(1));
    EXPECT_THAT(results[0].error().description,
                AllOf(HasSubstr(source / names[0]), EndsWith("No such file or directory")));
    EXPECT_THAT(namesIn(target.path()), IsEmpty());
}

TEST_P(SomeItems, TakeBackTheCopiesAfterOneWhoseSourceCannotGo) {
    // It is complete in the target, and stays where it was, for somebody may still write to it.
    const FileDescriptor writer(open((source / names[1]).c_str(), O_WRONLY | O_CLOEXEC));
    std::vector<PlannedTransfer> planned = plan(names);
    Names withdrawn;
    planned[2].destination.withdraw = [&](const std::string& name) { withdrawn.push_back(name); };
    const auto results = transfer(planned, isMove);
    ASSERT_THAT(results, SizeIs(2));
    EXPECT_TRUE(results[0]);
    EXPECT_THAT(results[1].error().description, AllOf(HasSubstr("kept"), HasSubstr(source / names[1])));
    EXPECT_THAT(namesIn(target.path()), ElementsAre(names[0], names[1]));
    EXPECT_EQ(namesIn(source.path()), Names(names.begin() + 1, names.end()));
    EXPECT_THAT(withdrawn, ElementsAre(names[2]));
}

TEST_F(CopyBatchTest, KeepsACopyThatSomebodyChangedInsteadOfTakingItBack) {
    const Names names = makeFiles(4);
    const FileDescriptor writer(open((source / names[1]).c_str(), O_WRONLY | O_CLOEXEC));
    std::vector<PlannedTransfer> planned = plan(names);
    // When the last one gets its name, the one before has its own.
    planned[3].destination.reserve = [&](const std::string&) {
        target.makeFile(names[2], "edited");
        return std::error_code();
    };
    const auto results = transfer(planned, isMove);
    ASSERT_THAT(results, SizeIs(2));
    EXPECT_THAT(results[1].error().description,
                EndsWith("(and kept the copy \"" + (target / names[2]) + "\")"));
    EXPECT_EQ(TemporaryFolder::read(target / names[2]), "edited");
    EXPECT_EQ(TemporaryFolder::read(source / names[2]), "content of " + names[2]);
    EXPECT_THAT(namesIn(target.path()), ElementsAre(names[0], names[1], names[2]));
}

TEST_F(CopyBatchTest, TakesBackWholeFoldersButNoneThatSomebodyHasOpen) {
    for (const char* name : {"a", "b tree", "c tree"}) {
        source.makeFolder(std::string(name) + "/sub");
        source.makeFile(std::string(name) + "/sub/file", name);
    }
    const FileDescriptor writer(open((source / "a/sub/file").c_str(), O_WRONLY | O_CLOEXEC));
    std::vector<PlannedTransfer> planned = plan(Names{"a", "b tree", "c tree", "d"});
    source.makeFile("d");
    FileDescriptor reader;
    planned[3].destination.reserve = [&](const std::string&) {
        reader = FileDescriptor(open((target / "c tree/sub/file").c_str(), O_RDWR | O_CLOEXEC));
        return std::error_code();
    };
    const auto results = transfer(planned, isMove);
    ASSERT_THAT(results, SizeIs(1));
    EXPECT_THAT(results[0].error().description,
                EndsWith("(and kept the copy \"" + (target / "c tree") + "\")"));
    EXPECT_THAT(namesIn(target.path()), ElementsAre("a", "c tree"));
    EXPECT_THAT(namesIn(source.path()), ElementsAre("a", "b tree", "c tree", "d"));
    EXPECT_EQ(TemporaryFolder::read(target / "c tree/sub/file"), "c tree");
}

TEST_F(CopyBatchTest, DropsManyItemsIntoAFolderThatCannotBeListed) {
    Names names = makeFiles(9);
    source.makeFolder("tree/sub");
    source.makeFile("tree/sub/a", "first");
    names.push_back("tree");
    setMode(target.path(), 0333);
    for (const auto* folder : {&home, &source, &target}) giveToOrdinaryUser(folder->path());
    {
        const OrdinaryUser user;
        const auto results = transfer(plan(names), isMove);
        ASSERT_THAT(results, SizeIs(names.size()));
        EXPECT_TRUE(results.back()) << results.back().error().description;
    }
    setMode(target.path(), 0755);
    EXPECT_EQ(namesIn(target.path()), names);
    EXPECT_THAT(namesIn(source.path()), IsEmpty());
}

TEST_F(CopyBatchTest, NumbersNamesInTheOrderOfTheItems) {
    const Names names = makeFiles(10);
    std::vector<PlannedTransfer> planned = plan(names);
    int number = 0;
    for (PlannedTransfer& one : planned) {
        one.destination.path = target / "same";
        one.destination.nextPath = [&] { return target / ("same(" + std::to_string(++number) + ")"); };
    }
    const auto results = transfer(planned, isMove);
    ASSERT_THAT(results, SizeIs(names.size()));
    EXPECT_EQ(TemporaryFolder::read(target / "same"), "content of " + names[0]);
    for (std::size_t i = 1; i < names.size(); ++i)
        EXPECT_EQ(TemporaryFolder::read(*results[i]), "content of " + names[i]);
}

void touchStatus(const std::string& path) {
    waitForAnotherTime();
    setMode(path, statusOf(path).st_mode);
}

/// As some programs do that keep the times of what they change.
void rewrite(const std::string& path, const std::string& content) {
    const struct stat before = statusOf(path);
    waitForAnotherTime();
    std::ofstream(path, std::ios::binary) << content;
    setTimes(path, before.st_atim, before.st_mtim);
}

TEST_F(CopyBatchTest, KeepsAFileThatWasRewrittenWithItsFormerTimesOnceItWasCopied) {
    source.makeFile("a", "first");
    const auto results = transfer(plan(Names{"a"}), isMove, [this] { rewrite(source / "a", "other"); });
    ASSERT_THAT(results, SizeIs(1));
    EXPECT_THAT(results[0].error().description, HasSubstr("kept because it changed"));
    EXPECT_EQ(TemporaryFolder::read(source / "a"), "other");
}

TEST_F(CopyBatchTest, KeepsAFolderInWhichAFileWasRewrittenOrTaggedOnceItWasCopied) {
    for (const std::string name : {"one", "two"}) {
        source.makeFolder(name);
        source.makeFile(name + "/a", "first");
        const auto results = transfer(plan(Names{name}), isMove, [&] {
            if (name == "one")
                rewrite(source / "one/a", "other");
            else
                touchStatus(source / "two/a");
        });
        ASSERT_THAT(results, SizeIs(1));
        EXPECT_THAT(results[0].error().description, HasSubstr("kept because it changed"));
        EXPECT_THAT(namesIn(source / name), ElementsAre("a"));
    }
    EXPECT_EQ(TemporaryFolder::read(source / "one/a"), "other");
}

/// Each that goes changes the status of the other ones.
TEST_F(CopyBatchTest, MovesAllNamesOfOneFile) {
    source.makeFile("a", "text");
    source.makeFolder("tree");
    for (const std::string name : {"b", "tree/c", "tree/d"})
        require(link((source / "a").c_str(), (source / name).c_str()) == 0, "link");
    const auto results = transfer(plan(Names{"a", "b", "tree"}), isMove);
    ASSERT_THAT(results, SizeIs(3));
    EXPECT_TRUE(results[2]) << results[2].error().description;
    EXPECT_THAT(namesIn(source.path()), IsEmpty());
}

TEST_F(CopyBatchTest, LeavesNothingWhenItIsCancelledAfterItsCopies) {
    source.makeFolder("tree");
    source.makeFile("tree/a", "text");
    const auto results = transfer(plan(Names{"tree"}), isMove, [this] { progress.cancel(); });
    ASSERT_THAT(results, SizeIs(1));
    EXPECT_EQ(results[0].error().code, std::errc::operation_canceled);
    EXPECT_THAT(namesIn(target.path()), IsEmpty());
    EXPECT_THAT(namesIn(source.path()), ElementsAre("tree"));
}

TEST_F(CopyBatchTest, AbandonedLeavesNothing) {
    const Names names = makeFiles(20);
    FileJournal journal(home / "journal");
    const auto batch = CopyBatch::plan(plan(names), isMove, {journal, progress, folders});
    ASSERT_TRUE(batch);
    (*batch)->copyAll();
    EXPECT_THAT(namesIn(target.path()), SizeIs(20));
    EXPECT_EQ((*batch)->abandon(), "");
    EXPECT_THAT(namesIn(target.path()), IsEmpty());
    EXPECT_EQ(namesIn(source.path()), names);
}

TEST_F(CopyBatchTest, TellsEachCopyThatItCannotRemove) {
    const Names names = makeFiles(3);
    for (const auto* folder : {&home, &source, &target}) giveToOrdinaryUser(folder->path());
    const OrdinaryUser user;
    FileJournal journal(home / "journal");
    for (const bool abandoned : {false, true}) {
        const auto batch = CopyBatch::plan(plan(names), isMove, {journal, progress, folders});
        ASSERT_TRUE(batch);
        (*batch)->copyAll();
        const Names hidden = namesIn(target.path());
        ASSERT_THAT(hidden, SizeIs(3));
        setMode(target.path(), 0555);
        const std::string told =
            abandoned ? (*batch)->abandon() : (*batch)->finish().front().error().description;
        for (const std::string& name : hidden)
            EXPECT_THAT(told, HasSubstr("(left behind: \"" + (target / name) + "\")"));
        setMode(target.path(), 0755);
        for (const std::string& name : hidden) std::filesystem::remove(target / name);
    }
}

/// The target lies in the source by another way: bound there, say.
TEST_F(CopyBatchTest, OfAFolderEndsWhereItMeetsItsOwnCopy) {
    source.makeFolder("tree/deep");
    source.makeFile("tree/deep/a");
    const FileDescriptor from(open(source.path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    const FileDescriptor to(open((source / "tree/deep").c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    const auto copied = copyFolder({from.get(), "tree"}, {to.get(), "copy"}, Flush::AtOnce, progress);
    ASSERT_FALSE(copied);
    EXPECT_EQ(copied.error().relativePath, "deep/copy");
}

TEST_F(CopyBatchTest, LeavesNothingWhenItIsCancelled) {
    const Names names = makeFiles(10);
    progress.cancel();
    const auto results = transfer(plan(names), isMove);
    ASSERT_THAT(results, SizeIs(1));
    EXPECT_EQ(results[0].error().code, std::errc::operation_canceled);
    EXPECT_THAT(namesIn(target.path()), IsEmpty());
    EXPECT_EQ(namesIn(source.path()), names);
}

} // namespace

} // namespace brimwick
