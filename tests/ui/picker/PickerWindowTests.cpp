#include "ui/support/InputSpy.h"
#include "ui/support/ProgramTest.h"

#include <QAction>
#include <QContextMenuEvent>
#include <QMenu>
#include <QPushButton>
#include <QWindow>

#include <gmock/gmock.h>

namespace brimwick {

class PickerWindow : public ProgramTest {
  protected:
    void SetUp() override {
        for (int number = 10; number < 22; ++number) home.makeFolder("root/box " + std::to_string(number));
        home.makeFolder("root/Zoo");
        home.makeFolder("root/apple");
        storePreferences({home / "root"});
        start();
    }
    std::string box(const std::string& name) const { return home / ("root/" + name); }
    int selectedRow() { return controls().searchResultsTableView->selectedRow(); }
};

TEST_F(PickerWindow, SelectsTheNearestRowForNumbersOutsideTheList) {
    invoke(BWModeOpen);
    type("box");
    ASSERT_EQ(resultNames().size(), 12U);
    picker().selectSearchResultsRow(-5);
    EXPECT_EQ(selectedRow(), 0);
    picker().selectSearchResultsRow(1000);
    EXPECT_EQ(selectedRow(), 11);
}

TEST_F(PickerWindow, SelectsNothingInAnEmptyList) {
    invoke(BWModeOpen);
    picker().selectSearchResultsRow(3);
    EXPECT_EQ(selectedRow(), -1);
}

TEST_F(PickerWindow, OpensTheFolderOnConfirmingInOpenModeAndStays) {
    invoke(BWModeOpen);
    type("zoo");
    picker().wickWindowMoveButtonWasPressed();
    EXPECT_THAT(fileManager.opened, testing::ElementsAre(fileUrlWithPath(box("Zoo"), true)));
    EXPECT_TRUE(picker().isVisible());
    EXPECT_EQ(sounds.played.size(), 1U);
}

TEST_F(PickerWindow, OpensTheFolderOnADoubleClickAndShowsThePickerAgain) {
    invoke(BWModeOpen);
    type("box");
    picker().selectSearchResultsRow(4);
    windowSystem.calls.clear();
    picker().searchResultsTableViewDoubleClick();
    EXPECT_THAT(fileManager.opened, testing::ElementsAre(fileUrlWithPath(box("box 14"), true)));
    EXPECT_TRUE(picker().isVisible());
    EXPECT_THAT(windowSystem.calls,
                testing::ElementsAre("withholdHeldKeys", "prepareToShow", "makeKeyAndOrderFront"));
    EXPECT_EQ(selectedRow(), 4);
}

TEST_F(PickerWindow, ShowsTheChosenFolderAndKeepsTheFilesInMoveMode) {
    selectFile("a.txt");
    selectFile("b.txt");
    invoke(BWModeMove);
    type("zoo");
    fileManager.windowSelection.clear();
    picker().wickWindowShowInFinderButtonWasPressed();
    EXPECT_EQ(fileManager.opened.size(), 1U);
    EXPECT_TRUE(picker().isVisible());
    EXPECT_EQ(picker().finderSelectedFiles().size(), 2U);
    EXPECT_TRUE(TemporaryFolder::exists(home / "a.txt"));
    EXPECT_TRUE(controls().selectedFilesTableView->isVisible());
}

TEST_F(PickerWindow, ComesBackOverAFolderThatItShowed) {
    selectFile("a.txt");
    invoke(BWModeMove);
    type("zoo");
    picker().wickWindowShowInFinderButtonWasPressed();
    controls().selectedFilesTableView->setVisible(false);
    windowSystem.calls.clear();
    fileManager.folderShown();
    EXPECT_THAT(windowSystem.calls, testing::ElementsAre("makeKeyAndOrderFront"));
    EXPECT_TRUE(controls().selectedFilesTableView->isVisible());
    picker().wickWindowCloseButtonWasPressed();
    windowSystem.calls.clear();
    fileManager.folderShown();
    EXPECT_TRUE(windowSystem.calls.empty()) << "a picker that was put away stays away";
}

TEST_F(PickerWindow, LeavesTheFolderInFrontThatItOpenedInOpenMode) {
    invoke(BWModeOpen);
    type("zoo");
    picker().wickWindowMoveButtonWasPressed();
    windowSystem.calls.clear();
    fileManager.folderShown();
    EXPECT_TRUE(windowSystem.calls.empty());
}

TEST_F(PickerWindow, MovesTheFilesHidesAndRecordsTheAction) {
    selectFile("a.txt");
    invoke(BWModeMove);
    type("zoo");
    picker().wickWindowMoveButtonWasPressed();
    EXPECT_FALSE(TemporaryFolder::exists(home / "a.txt"));
    EXPECT_TRUE(TemporaryFolder::exists(box("Zoo/a.txt")));
    EXPECT_FALSE(picker().isVisible());
    EXPECT_TRUE(picker().isInPhantomMode());
    EXPECT_THAT(notifications.texts(), testing::ElementsAre("Moved file a.txt to folder " + box("Zoo")));
    EXPECT_TRUE(brimwick->view().statusMenu().undoMenuItem().isEnabled());
}

TEST_F(PickerWindow, CopiesTheFilesInCopyMode) {
    selectFile("a.txt");
    invoke(BWModeCopy);
    type("zoo");
    picker().wickContextMenuMoveFileSelected();
    EXPECT_TRUE(TemporaryFolder::exists(home / "a.txt"));
    EXPECT_TRUE(TemporaryFolder::exists(box("Zoo/a.txt")));
    EXPECT_THAT(sounds.played, testing::ElementsAre("Camera.mp3"));
}

TEST_F(PickerWindow, RecordsFilesOfSeveralFoldersWithTheFirstOnesFolder) {
    home.makeFolder("elsewhere");
    selectFile("a.txt");
    selectFile("elsewhere/b.txt");
    invoke(BWModeMove);
    type("zoo");
    picker().wickWindowMoveButtonWasPressed();
    const auto action = brimwick->model().undoStack().top();
    ASSERT_TRUE(action);
    EXPECT_EQ(action->sourceFolder().path(), home.path());
    brimwick->view().statusMenu().undoMenuItemSelected();
    EXPECT_TRUE(TemporaryFolder::exists(home / "a.txt"));
    EXPECT_TRUE(TemporaryFolder::exists(home / "b.txt"));
    EXPECT_FALSE(TemporaryFolder::exists(home / "elsewhere/b.txt"));
}

TEST_F(PickerWindow, HidesAfterAFailedActionAndDoesNotRecordIt) {
    fileManager.windowSelection = {fileUrlWithPath(home / "root", true)};
    invoke(BWModeMove);
    type("zoo");
    picker().wickWindowMoveButtonWasPressed();
    EXPECT_FALSE(picker().isVisible());
    EXPECT_FALSE(brimwick->model().undoStack().top());
    ASSERT_EQ(notifications.texts().size(), 1U);
    EXPECT_THAT(notifications.texts()[0], testing::StartsWith("Error moving file: "));
    EXPECT_TRUE(TemporaryFolder::exists(box("Zoo")));
}

TEST_F(PickerWindow, SaysSoWhenTheDestinationIsGone) {
    selectFile("a.txt");
    invoke(BWModeMove);
    type("zoo");
    std::filesystem::remove(box("Zoo"));
    picker().wickWindowMoveButtonWasPressed();
    EXPECT_TRUE(TemporaryFolder::exists(home / "a.txt"));
    ASSERT_EQ(notifications.texts().size(), 1U);
    EXPECT_THAT(notifications.texts()[0], testing::StartsWith("Error moving file: "));
}

TEST_F(PickerWindow, SkipsAFileThatVanishedBeforeTheConfirmation) {
    const std::string vanishing = selectFile("a.txt");
    selectFile("b.txt");
    invoke(BWModeMove);
    type("zoo");
    std::filesystem::remove(vanishing);
    picker().wickWindowMoveButtonWasPressed();
    EXPECT_TRUE(TemporaryFolder::exists(box("Zoo/b.txt")));
    EXPECT_EQ(notifications.texts().size(), 1U);
}

TEST_F(PickerWindow, RefusesToConfirmWithoutResults) {
    selectFile("a.txt");
    invoke(BWModeMove);
    type("nowhere");
    picker().wickWindowMoveButtonWasPressed();
    picker().wickWindowShowInFinderButtonWasPressed();
    EXPECT_THAT(notifications.texts(), testing::ElementsAre("No folders are present in the list.",
                                                            "No folders are present in the list."));
    EXPECT_THAT(sounds.played, testing::ElementsAre("Basso.aiff", "Basso.aiff"));
    EXPECT_TRUE(picker().isVisible());
}

TEST_F(PickerWindow, ShowsTheFolderOfTheSelectedFile) {
    selectFile("a.txt");
    invoke(BWModeMove);
    picker().selectedFilesTableViewDoubleClick();
    EXPECT_THAT(notifications.texts(),
                testing::ElementsAre("No selected files or folders are selected in the list."));
    controls().selectedFilesTableView->selectRow(0);
    picker().selectedFilesContextMenuShowInFinderMenuItemSelected();
    EXPECT_THAT(fileManager.opened, testing::ElementsAre(fileUrlWithPath(home.path(), true)));
}

TEST_F(PickerWindow, RefusesToShowAFileWhenNoneIsListed) {
    invoke(BWModeOpen);
    picker().showSelectedFileOrFolderInFinder();
    EXPECT_THAT(notifications.texts(),
                testing::ElementsAre("No selected files or folders are present in the list."));
}

TEST_F(PickerWindow, StoresTheMoveHeightWhenClosedInOpenMode) {
    invoke(BWModeOpen);
    picker().wickWindow().setMinimumFrameSize({0, 0});
    picker().wickWindow().setFrameSize({600, 480});
    picker().wickWindowCloseButtonWasPressed();
    EXPECT_EQ(*storedPreferences().find("WickWindowWidth"), PropertyListValue{std::string("600")});
    EXPECT_EQ(*storedPreferences().find("WickWindowHeight"), PropertyListValue{std::string("578")});
}

TEST_F(PickerWindow, KeepsItsSizeOverManyOpenAndCloseCycles) {
    selectFile("a.txt");
    for (int cycle = 0; cycle < 20; ++cycle) {
        invoke(cycle % 2 == 0 ? BWModeMove : BWModeOpen);
        QApplication::processEvents();
        picker().wickWindowCloseButtonWasPressed();
    }
    EXPECT_EQ(*storedPreferences().find("WickWindowWidth"), PropertyListValue{std::string("520")});
    EXPECT_EQ(*storedPreferences().find("WickWindowHeight"), PropertyListValue{std::string("572")});
}

TEST_F(PickerWindow, StoresTheSizeThatTheUserGaveIt) {
    // The frame of the offscreen desktop: a window that knows it beforehand is never resized once shown.
    windowSystem.margins = FrameMargins{2, 2, 2, 2};
    selectFile("a.txt");
    invoke(BWModeMove);
    QApplication::processEvents();
    const QSize frame = picker().wickWindow().frameSize();
    picker().wickWindow().windowHandle()->resize(picker().wickWindow().size() + QSize(40, 60));
    QApplication::processEvents();
    picker().wickWindowCloseButtonWasPressed();
    EXPECT_EQ(*storedPreferences().find("WickWindowWidth"),
              PropertyListValue{std::to_string(frame.width() + 40)});
    EXPECT_EQ(*storedPreferences().find("WickWindowHeight"),
              PropertyListValue{std::to_string(frame.height() + 60)});
}

TEST_F(PickerWindow, HidesThePromptWhileThereIsText) {
    invoke(BWModeOpen);
    EXPECT_TRUE(promptIsShown());
    type("z");
    EXPECT_FALSE(promptIsShown());
    type("");
    EXPECT_TRUE(promptIsShown());
    EXPECT_TRUE(resultNames().empty());
}

TEST_F(PickerWindow, SaysThatNoFolderWasFound) {
    selectFile("a.txt");
    invoke(BWModeMove);
    type("nowhere");
    EXPECT_TRUE(promptIsShown());
    EXPECT_EQ(prompt(), "No folders found.");
    EXPECT_FALSE(controls().wickWindowMoveButton->isEnabled());
    type("");
    EXPECT_EQ(prompt(), "Type the name of the destination folder in the Search box.");
    EXPECT_TRUE(resultNames().empty());
}

TEST_F(PickerWindow, ListsUpperCaseNamesBeforeLowerCaseOnesWithTheFirstSelected) {
    invoke(BWModeOpen);
    type("o");
    EXPECT_EQ(resultNames().front(), "Zoo");
    EXPECT_EQ(selectedRow(), 0);
    EXPECT_TRUE(controls().wickWindowMoveButton->isEnabled());
}

TEST_F(PickerWindow, SearchesNothingInPhantomMode) {
    invoke(BWModeOpen);
    type("zoo");
    picker().wickWindowCloseButtonWasPressed();
    controls().searchField->setText("apple");
    picker().search();
    EXPECT_THAT(resultNames(), testing::ElementsAre("Zoo"));
}

TEST_F(PickerWindow, TakesNoInputInPhantomMode) {
    invoke(BWModeOpen);
    EXPECT_TRUE(clickReaches(picker().wickWindow()));
    picker().wickWindowCloseButtonWasPressed();
    EXPECT_FALSE(clickReaches(picker().wickWindow()));
}

TEST_F(PickerWindow, SelectsTheRowUnderARightClickBeforeTheMenuOpens) {
    invoke(BWModeOpen);
    type("box");
    BWWickTableView* table = controls().searchResultsTableView;
    const QPoint third = table->visualRect(table->model()->index(2, 0)).center();
    EXPECT_EQ(table->menuForEvent(third), controls().wickContextMenu);
    EXPECT_EQ(selectedRow(), 2);
    EXPECT_EQ(table->menuForEvent({10, 5000}), controls().wickContextMenu);
    EXPECT_EQ(selectedRow(), 2);
}

TEST_F(PickerWindow, IsOrderedOutByItsTitleBarWithoutPhantomMode) {
    invoke(BWModeOpen);
    picker().wickWindow().close();
    EXPECT_FALSE(picker().isVisible());
    EXPECT_FALSE(picker().isInPhantomMode());
    invoke(BWModeOpen);
    EXPECT_TRUE(picker().isVisible());
}

TEST_F(PickerWindow, StaysAwayAfterItsTitleBarClosedItWhenARebuildEnds) {
    invoke(BWModeOpen);
    picker().wickWindow().close();
    IndexRebuilder& rebuilder = brimwick->model().indexRebuilder();
    rebuilder.setIndexedFoldersHaveChanged(true);
    rebuilder.rebuildIndexOnSeparateThreadWithRecursionCountForReason(BWInteger(),
                                                                      rebuildReasonPreferencesChanged);
    ASSERT_TRUE(mainLoop.runNext());
    EXPECT_FALSE(picker().isVisible());
}

TEST_F(PickerWindow, FollowsANewIndexWhileItShows) {
    invoke(BWModeOpen);
    type("mango");
    EXPECT_TRUE(resultNames().empty());
    home.makeFolder("root/mango");
    IndexRebuilder& rebuilder = brimwick->model().indexRebuilder();
    rebuilder.setIndexedFoldersHaveChanged(true);
    rebuilder.rebuildIndexOnSeparateThreadWithRecursionCountForReason(BWInteger(),
                                                                      rebuildReasonPreferencesChanged);
    ASSERT_TRUE(mainLoop.runNext());
    EXPECT_THAT(resultNames(), testing::ElementsAre("mango"));
}

TEST_F(PickerWindow, HidesTheSelectedFilesWhenItStopsBeingTheKeyWindow) {
    selectFile("a.txt");
    invoke(BWModeMove);
    QApplication::processEvents();
    QWidget other;
    other.show();
    other.activateWindow();
    QApplication::processEvents();
    EXPECT_FALSE(controls().selectedFilesTableView->isVisible());
    invoke(BWModeMove);
    EXPECT_TRUE(controls().selectedFilesTableView->isVisible());
}

TEST_F(PickerWindow, KeepsTheSelectedFilesWhileItsOwnMenuIsOpen) {
    selectFile("a.txt");
    invoke(BWModeMove);
    QApplication::processEvents();
    controls().wickContextMenu->popup(picker().wickWindow().pos());
    QApplication::processEvents();
    EXPECT_TRUE(controls().selectedFilesTableView->isVisible());
    controls().wickContextMenu->close();
}

TEST_F(PickerWindow, TellsFoldersOfTheSameNameApart) {
    home.makeFolder("root/apple/Zoo");
    brimwick.reset();
    start();
    invoke(BWModeOpen);
    type("zoo");
    const QAbstractItemModel* rows = controls().searchResultsTableView->model();
    ASSERT_EQ(rows->rowCount(), 2);
    EXPECT_EQ(rows->index(0, 0).data(), rows->index(1, 0).data());
    EXPECT_NE(rows->index(0, 0).data(Qt::UserRole), rows->index(1, 0).data(Qt::UserRole));
}

} // namespace brimwick
