#include "actions/FileJournal.h"
#include "actions/FileTransfer.h"
#include "actions/OpenFolders.h"
#include "actions/TransferProgress.h"

#include <gmock/gmock.h>

#include <cstdlib>

#include "unit/actions/FileFacts.h"

namespace brimwick {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::MatchesRegex;

class TrashTest : public testing::Test {
  protected:
    TrashTest() { unsetenv("XDG_DATA_HOME"); }
    ~TrashTest() override { unsetenv("XDG_DATA_HOME"); }

    std::string files() const { return home / ".local/share/Trash/files"; }
    std::string info() const { return home / ".local/share/Trash/info"; }

    TemporaryFolder home;
    FileJournal journal;
    TransferProgress progress;
    OpenFolders folders;
    FileTransfer transfer{home.path(), {journal, progress, folders}};
};

TEST_F(TrashTest, FirstUseLeadsToTheDesktopsTrash) {
    home.makeFile("a", "x");
    const auto path = transfer.moveToTrash(home / "a", "a");
    ASSERT_TRUE(path) << path.error().description;
    EXPECT_EQ(*path, home / ".Trash/a");
    EXPECT_EQ(std::filesystem::read_symlink(home / ".Trash"), files());
    EXPECT_EQ(statusOf(home / ".local/share/Trash").st_mode & 07777U, 0700U);
    EXPECT_EQ(statusOf(files()).st_mode & 07777U, 0700U);
    EXPECT_EQ(TemporaryFolder::read(files() + "/a"), "x");
}

TEST_F(TrashTest, HonoursTheConfiguredDataFolder) {
    setenv("XDG_DATA_HOME", (home / "data").c_str(), 1);
    home.makeFile("a");
    ASSERT_TRUE(FileTransfer(home.path(), {journal, progress, folders}).moveToTrash(home / "a", "a"));
    EXPECT_THAT(namesIn(home / "data/Trash/files"), ElementsAre("a"));
    EXPECT_FALSE(TemporaryFolder::exists(home / ".local"));
}

TEST_F(TrashTest, ATrashFolderOfTheUsersOwnIsUsedAsItIs) {
    home.makeFolder(".Trash");
    home.makeFile("a");
    ASSERT_TRUE(transfer.moveToTrash(home / "a", "a"));
    EXPECT_THAT(namesIn(home / ".Trash"), ElementsAre("a"));
    EXPECT_FALSE(TemporaryFolder::exists(home / ".local"));
}

TEST_F(TrashTest, MakesTheDesktopsTrashAgainWhenItIsGone) {
    home.makeFile("a");
    home.makeFile("b");
    ASSERT_TRUE(transfer.moveToTrash(home / "a", "a"));
    std::filesystem::remove_all(home / ".local");
    ASSERT_TRUE(transfer.moveToTrash(home / "b", "b"));
    EXPECT_THAT(namesIn(files()), ElementsAre("b"));
}

TEST_F(TrashTest, RecordsWhereAnItemCameFrom) {
    home.makeFolder("föl der");
    home.makeFile("föl der/100%\n");
    ASSERT_TRUE(transfer.moveToTrash(home / "föl der/100%\n", "100%\n"));
    EXPECT_THAT(namesIn(info()), ElementsAre("100%\n.trashinfo"));
    EXPECT_THAT(TemporaryFolder::read(info() + "/100%\n.trashinfo"),
                MatchesRegex("\\[Trash Info\\]\nPath=" + home.path() +
                             "/f%C3%B6l%20der/100%25%0A\n"
                             "DeletionDate=[0-9]{4}-[0-9]{2}-[0-9]{2}T[0-9]{2}:[0-9]{2}:[0-9]{2}\n"));
}

TEST_F(TrashTest, ATakenNameIsAnErrorAndLeavesTheRecordsAlone) {
    home.makeFile("a", "old");
    ASSERT_TRUE(transfer.moveToTrash(home / "a", "a"));
    const std::string record = TemporaryFolder::read(info() + "/a.trashinfo");
    home.makeFolder("other");
    home.makeFile("other/a", "new");
    const auto path = transfer.moveToTrash(home / "other/a", "a");
    ASSERT_FALSE(path);
    EXPECT_EQ(path.error().description,
              "The Trash already holds an item of this name, \"" + (home / ".Trash/a") + "\": File exists");
    EXPECT_EQ(TemporaryFolder::read(info() + "/a.trashinfo"), record);
    EXPECT_EQ(TemporaryFolder::read(home / "other/a"), "new");
    EXPECT_EQ(TemporaryFolder::read(files() + "/a"), "old");
}

TEST_F(TrashTest, AnItemThatFailsToArriveIsNotOnRecord) {
    std::filesystem::create_directories(files());
    home.makeFile(".local/share/Trash/files/a", "unrecorded");
    home.makeFile("a");
    EXPECT_FALSE(transfer.moveToTrash(home / "a", "a"));
    EXPECT_THAT(namesIn(info()), IsEmpty());
}

TEST_F(TrashTest, ANumberedItemIsOnRecordUnderItsNumber) {
    home.makeFile("a");
    ASSERT_TRUE(transfer.moveToTrash(home / "a", "a"));
    home.makeFile("a");
    const auto path =
        transfer.move({home / "a", home / ".Trash/a", [this] { return home / ".Trash/a(7)"; }, 0});
    ASSERT_TRUE(path);
    EXPECT_THAT(namesIn(info()), ElementsAre("a(7).trashinfo", "a.trashinfo"));
}

TEST_F(TrashTest, WhatIsTakenOutIsStruckOff) {
    home.makeFile("a");
    home.makeFile("b");
    ASSERT_TRUE(transfer.moveToTrash(home / "a", "a"));
    ASSERT_TRUE(transfer.moveToTrash(home / "b", "b"));
    ASSERT_TRUE(transfer.move({home / ".Trash/a", home / "a", nullptr, 0}));
    EXPECT_THAT(namesIn(info()), ElementsAre("b.trashinfo"));
    home.makeFile("taken");
    EXPECT_FALSE(transfer.move({home / ".Trash/b", home / "taken", nullptr, 0}));
    EXPECT_THAT(namesIn(info()), ElementsAre("b.trashinfo"));
}

TEST_F(TrashTest, CopiesIntoTheTrashAreOnRecordAndItemsInItsSubfoldersAreNot) {
    std::filesystem::create_directories(files() + "/sub");
    home.makeFile("a");
    for (const std::string& target : {home / ".Trash/a", files() + "/sub/a"}) {
        const auto batch = transfer.planCopies({{home / "a", target, nullptr, 0}}, false);
        ASSERT_TRUE(batch);
        (*batch)->copyAll();
        ASSERT_TRUE(transfer.finishCopies(**batch).front());
    }
    EXPECT_THAT(namesIn(info()), ElementsAre("a.trashinfo"));
    EXPECT_THAT(namesIn(files()), ElementsAre("a", "sub"));
}

} // namespace

} // namespace brimwick
