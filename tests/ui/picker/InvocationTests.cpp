#include "ui/support/ProgramTest.h"

#include <QAction>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>

#include <gmock/gmock.h>

namespace brimwick {

class Invocation : public ProgramTest {
  protected:
    void SetUp() override {
        home.makeFolder("root/Résumés");
        storePreferences({home / "root"});
        start();
    }
};

TEST_F(Invocation, ByAHotKeyOpensItsMode) {
    selectFile("a.txt");
    EXPECT_TRUE(hotKeys.pressAndRelease(46, HotKeyModifier::control | HotKeyModifier::command));
    EXPECT_TRUE(picker().isVisible());
    EXPECT_EQ(picker().mode(), BWModeMove);
    EXPECT_TRUE(hotKeys.pressAndRelease(31, HotKeyModifier::control | HotKeyModifier::command));
    EXPECT_EQ(picker().mode(), BWModeOpen);
}

TEST_F(Invocation, MakesTheWindowTallEnoughForItsLayout) {
    brimwick->model().preferences().preferences().set("WickWindowHeight", {std::string("500")});
    selectFile("a.txt");
    invoke(BWModeMove);
    EXPECT_EQ(picker().wickWindow().frameSize().height(), 550);
    brimwick->model().preferences().preferences().set("WickWindowHeight", {std::string("900")});
    picker().wickWindow().setPhantomMode(true);
    brimwick->model().preferences().preferences().set("WickWindowHeight", {std::string("900")});
    invoke(BWModeOpen);
    EXPECT_EQ(picker().wickWindow().frameSize().height(), 802);
}

TEST_F(Invocation, TitlesTheBoxByTheNumberOfFiles) {
    selectFile("a.txt");
    invoke(BWModeMove);
    EXPECT_EQ(controls().selectedFoldersBox->title(), "Move file:");
    EXPECT_EQ(controls().wickContextMenuMoveFileMenuItem->text(), "Move File Here");
    EXPECT_EQ(controls().wickWindowMoveButton->text(), "Move");
    selectFile("b.txt");
    invoke(BWModeMove);
    EXPECT_EQ(controls().selectedFoldersBox->title(), "Move files:");
    EXPECT_EQ(controls().wickContextMenuMoveFileMenuItem->text(), "Move Files Here");
    invoke(BWModeCopy);
    EXPECT_EQ(controls().selectedFoldersBox->title(), "Copy files:");
    EXPECT_EQ(controls().wickContextMenuMoveFileMenuItem->text(), "Copy Files Here");
    EXPECT_EQ(controls().wickWindowMoveButton->text(), "Copy");
    EXPECT_EQ(controls().searchFieldCaption->text(), "To:");
}

TEST_F(Invocation, ListsTheSelectedFilesInTheFileManagersOrder) {
    selectFile("b.txt");
    selectFile("a\nline.txt");
    invoke(BWModeMove);
    ASSERT_EQ(picker().finderSelectedFiles().size(), 2U);
    EXPECT_EQ(picker().finderSelectedFiles()[0].name(), "b.txt");
    EXPECT_EQ(picker().finderSelectedFiles()[1].path(), home / "a\nline.txt");
    EXPECT_TRUE(controls().selectedFilesTableView->isVisible());
    EXPECT_EQ(controls().selectedFilesTableView->model()->index(1, 0).data().toString(), "a↵line.txt");
}

TEST_F(Invocation, TakesTheDesktopsSelectionWhenTheWindowHasNone) {
    fileManager.desktopSelection = {fileUrlWithPath(home.makeFile("on desktop.txt"), false)};
    fileManager.targets = {{7}};
    invoke(BWModeMove);
    EXPECT_TRUE(picker().isVisible());
    ASSERT_EQ(picker().finderSelectedFiles().size(), 1U);
    EXPECT_EQ(picker().finderSelectedFiles()[0].name(), "on desktop.txt");
    EXPECT_THAT(fileManager.calls, testing::ElementsAre("frontmost", "raise 7", "activate", "selection",
                                                        "selectDesktop", "selection"));
}

TEST_F(Invocation, RefusesAnEmptySelectionAndStaysHidden) {
    for (const Mode mode : {BWModeMove, BWModeCopy}) {
        notifications.delivered.clear();
        sounds.played.clear();
        invoke(mode);
        EXPECT_FALSE(picker().isVisible());
        EXPECT_THAT(
            notifications.texts(),
            testing::ElementsAre(
                "No files selected in Finder. Please select files before invoking the Move command."));
        EXPECT_THAT(sounds.played, testing::ElementsAre("Basso.aiff"));
    }
}

TEST_F(Invocation, DoesNothingWhenAnotherProgramIsInFront) {
    fileManager.frontmost = "XTerm";
    selectFile("a.txt");
    invoke(BWModeMove);
    EXPECT_FALSE(picker().isVisible());
    EXPECT_TRUE(notifications.delivered.empty());
    EXPECT_TRUE(sounds.played.empty());
    EXPECT_THAT(fileManager.calls, testing::ElementsAre("frontmost"));
}

TEST_F(Invocation, GoesOnWhereTheFrontmostProgramCannotBeAsked) {
    fileManager.frontmost = std::nullopt;
    selectFile("a.txt");
    invoke(BWModeMove);
    EXPECT_TRUE(picker().isVisible());
}

TEST_F(Invocation, InOpenModeAsksTheFileManagerNothingAndHidesTheBox) {
    fileManager.frontmost = "XTerm";
    invoke(BWModeOpen);
    EXPECT_TRUE(picker().isVisible());
    EXPECT_TRUE(fileManager.calls.empty());
    EXPECT_FALSE(controls().selectedFoldersBox->isVisible());
    EXPECT_FALSE(controls().wickWindowShowInFinderButton->isVisible());
    EXPECT_FALSE(controls().wickContextMenuMoveFileMenuItem->isVisible());
    EXPECT_EQ(controls().searchFieldCaption->text(), "Open:");
    EXPECT_EQ(controls().wickWindowMoveButton->text(), "Open");
    EXPECT_EQ(prompt(), "Type the name of the folder to open in the Search box.");
}

TEST_F(Invocation, WhileShowingClosesThePickerFirst) {
    selectFile("a.txt");
    invoke(BWModeMove);
    fileManager.calls.clear();
    windowSystem.calls.clear();
    invoke(BWModeOpen);
    EXPECT_THAT(fileManager.calls, testing::ElementsAre("activate"));
    EXPECT_THAT(windowSystem.calls,
                testing::ElementsAre("withholdHeldKeys", "prepareToShow", "makeKeyAndOrderFront"));
    EXPECT_TRUE(picker().isVisible());
}

TEST_F(Invocation, WhileShowingOpensInTheNewModeEvenOverAnotherProgram) {
    fileManager.frontmost = "XTerm";
    selectFile("a.txt");
    invoke(BWModeOpen);
    invoke(BWModeMove);
    EXPECT_TRUE(picker().isVisible());
    EXPECT_EQ(picker().mode(), BWModeMove);
}

TEST_F(Invocation, AfterATitleBarCloseLeavesAnotherProgramInFront) {
    invoke(BWModeOpen);
    picker().wickWindow().close();
    fileManager.frontmost = "XTerm";
    fileManager.calls.clear();
    invoke(BWModeMove);
    EXPECT_FALSE(picker().isVisible());
    EXPECT_THAT(fileManager.calls, testing::ElementsAre("frontmost"));
}

TEST_F(Invocation, ReadsTheSelectionBeforeItTakesTheFocus) {
    selectFile("a.txt");
    windowSystem.calls.clear();
    invoke(BWModeMove);
    EXPECT_THAT(windowSystem.calls, testing::ElementsAre("prepareToShow", "makeKeyAndOrderFront"));
    EXPECT_THAT(fileManager.calls, testing::ElementsAre("frontmost", "activate", "selection"));
}

TEST_F(Invocation, KeepsTheSearchTextAndItsResults) {
    selectFile("a.txt");
    invoke(BWModeMove);
    type("resume");
    picker().wickWindowCloseButtonWasPressed();
    invoke(BWModeMove);
    EXPECT_EQ(picker().searchText(), "resume");
    EXPECT_EQ(controls().searchField->selectedText(), "resume");
    EXPECT_THAT(resultNames(), testing::ElementsAre("Résumés"));
}

TEST_F(Invocation, MovesAFileWhoseNameIsNoUtf8) {
    const std::string file = selectFile("caf\xe9.txt", "bytes");
    invoke(BWModeMove);
    type("resume");
    picker().wickWindowMoveButtonWasPressed();
    EXPECT_FALSE(TemporaryFolder::exists(file));
    EXPECT_EQ(TemporaryFolder::read(home / "root/Résumés/caf\xe9.txt"), "bytes");
}

class InvocationBeforeTheFirstIndex : public ProgramTest {};

TEST_F(InvocationBeforeTheFirstIndex, ShowsThePickerCurtainedUntilTheIndexIsComplete) {
    home.makeFolder("root/Résumés");
    storePreferences({home / "root"});
    startWithoutIndex();
    selectFile("a.txt");
    invoke(BWModeMove);
    QApplication::processEvents();
    EXPECT_TRUE(picker().isVisible());
    EXPECT_TRUE(controls().wickWindowCurtain->isVisible());
    EXPECT_FALSE(controls().searchField->isEnabled());
    ASSERT_TRUE(mainLoop.runNext());
    EXPECT_FALSE(controls().wickWindowCurtain->isVisible());
    EXPECT_TRUE(controls().searchField->isEnabled());
    EXPECT_TRUE(controls().searchField->hasFocus());
    type("res");
    EXPECT_THAT(resultNames(), testing::ElementsAre("Résumés"));
}

} // namespace brimwick
