#include "actions/JournalLine.h"
#include "model/SupportFolder.h"
#include "ui/support/ProgramTest.h"

#include <QLabel>
#include <QMessageBox>
#include <QRegularExpression>
#include <QTimer>

#include <algorithm>

namespace brimwick {

using StartUp = ProgramTest;

TEST_F(StartUp, MakesTheSupportFolderBelowTheHome) {
    startWithoutIndex();
    EXPECT_TRUE(std::filesystem::is_directory(supportFolder()));
    EXPECT_EQ(brimwick->model().appSupportRootPath(), supportFolder());
    EXPECT_EQ(brimwick->model().downloadPath(), home / "Downloads");
}

TEST_F(StartUp, IsSilentAboutASupportFolderThatExists) {
    std::filesystem::create_directories(supportFolder());
    startWithoutIndex();
    EXPECT_TRUE(brimwick->model().makeBrimwickFolder());
    EXPECT_TRUE(notifications.delivered.empty());
}

TEST_F(StartUp, SaysThatTheSupportFolderCannotBeMadeAndGoesOn) {
    home.makeFile("Library");
    startWithoutIndex();
    EXPECT_EQ(notifications.texts(),
              (std::vector<std::string>{
                  "ERROR: Could not create Brimwick folder in you Application Support folder."}));
    EXPECT_TRUE(brimwick->view().preferencesUIHasBeenInitialized());
}

TEST_F(StartUp, PutsRightWhatAnEarlierRunLeftHalfDoneAndSaysSoInOneMessage) {
    std::filesystem::create_directories(supportFolder());
    home.makeFile("a", "first");
    home.makeFile("b", "second");
    std::ofstream journal(fileJournalPath(home.path()));
    for (const std::string name : {"a", "b"}) {
        InterruptedTransfer copy;
        copy.source = home / name;
        copy.staged = home.makeFile(".brimwick-1-" + name + ".part", name == "a" ? "fir" : "");
        journal << static_cast<int>(name[0]) << ' ' << journalLineForStaging(copy) << '\n';
    }
    journal.close();
    startWithoutIndex();
    const std::string told =
        "Cleaned up after an interrupted copy of file a, which is still in folder " + home.path() +
        "\nCleaned up after an interrupted copy of file b, which is still in folder " + home.path();
    const auto isTold = [&] { return std::ranges::count(notifications.texts(), told) == 1; };
    while (!isTold()) ASSERT_TRUE(mainLoop.runNext());
    EXPECT_FALSE(TemporaryFolder::exists(home / ".brimwick-1-a.part"));
    EXPECT_FALSE(TemporaryFolder::exists(home / ".brimwick-1-b.part"));
    EXPECT_EQ(TemporaryFolder::read(fileJournalPath(home.path())), "");
}

TEST_F(StartUp, InitializesTheInterfaceOnlyOnce) {
    start();
    const std::size_t closings = windowSystem.calls.size();
    brimwick->view().initializeUserInterface();
    EXPECT_EQ(windowSystem.calls.size(), closings);
    EXPECT_FALSE(brimwick->model().indexRebuilder().indexIsRebuilding());
}

TEST_F(StartUp, OpensThePickerInTheStoredSize) {
    storePreferences({},
                     {{"WickWindowWidth", {std::string("600")}}, {"WickWindowHeight", {std::string("700")}}});
    windowSystem.margins = FrameMargins{2, 2, 2, 2};
    start();
    EXPECT_EQ(picker().wickWindow().frameSize(), QSize(600, 700));
    EXPECT_TRUE(picker().wickWindow().isInPhantomMode());
    selectFile("a.txt");
    invoke(BWModeMove);
    QApplication::processEvents();
    EXPECT_EQ(picker().wickWindow().frameGeometry().size(), QSize(600, 700));
}

TEST_F(StartUp, HealsAStoredSizeThatNoWindowCanHave) {
    storePreferences(
        {}, {{"WickWindowWidth", {std::string("99999999")}}, {"WickWindowHeight", {std::string("-3")}}});
    start();
    EXPECT_LT(picker().wickWindow().frameSize().width(), 32'767);
    EXPECT_GE(picker().wickWindow().frameSize().height(), 0);
}

TEST_F(StartUp, KeepsThePickerHiddenUntilItIsInvoked) {
    start();
    EXPECT_FALSE(picker().isVisible());
    EXPECT_EQ(picker().wickWindow().alpha(), 0.0);
}

TEST_F(StartUp, RegistersTheThreeHotKeysOfThePreferences) {
    startWithoutIndex();
    ASSERT_EQ(hotKeys.held->size(), 3U);
    for (const auto& held : *hotKeys.held)
        EXPECT_EQ(held.modifiers, HotKeyModifier::control | HotKeyModifier::command);
    EXPECT_EQ(hotKeys.held->front().keyCode, 46);
}

TEST_F(StartUp, IndexesTheStoredFoldersAndSaysSo) {
    home.makeFolder("root/sub");
    storePreferences({home / "root"});
    startWithoutIndex();
    EXPECT_FALSE(brimwick->view().actionsEnabled());
    ASSERT_TRUE(mainLoop.runNext());
    EXPECT_TRUE(brimwick->view().actionsEnabled());
    EXPECT_EQ(brimwick->model().folderIndexer().index()->size(), 2U);
    EXPECT_EQ(notifications.texts(), (std::vector<std::string>{"Index initialization complete."}));
}

TEST_F(StartUp, StartsWithNoIndexedFoldersAtAll) {
    start();
    EXPECT_TRUE(brimwick->view().actionsEnabled());
    EXPECT_TRUE(controls().searchField->isEnabled());
    EXPECT_TRUE(controls().wickWindowCurtain->isHidden());
}

TEST_F(StartUp, PlaysTheLaunchSoundUnlessItIsSwitchedOff) {
    startWithoutIndex();
    EXPECT_EQ(sounds.played.size(), 1U);
    brimwick.reset();
    sounds.played.clear();
    storePreferences({}, {{"NotificationSoundOnLaunch", {false}}});
    startWithoutIndex();
    EXPECT_TRUE(sounds.played.empty());
}

TEST_F(StartUp, KeepsTheIndexedFoldersOfAFileOverARun) {
    home.makeFolder("root");
    storePreferences({home / "root"});
    start();
    brimwick.reset();
    const PropertyListDictionary stored = storedPreferences();
    ASSERT_NE(stored.find("IndexedFolders"), nullptr);
    EXPECT_EQ(*stored.find("IndexedFolders"),
              (PropertyListValue{PropertyListArray{PropertyListValue{home / "root"}}}));
}

TEST_F(StartUp, DropsTheFirstIndexWhenTheProgramEndsBefore) {
    home.makeFolder("root");
    storePreferences({home / "root"});
    startWithoutIndex();
    brimwick.reset();
    while (mainLoop.hasTasks()) mainLoop.runNext();
    EXPECT_TRUE(notifications.delivered.empty());
}

TEST_F(StartUp, EnablesUndoAndRedoOnlyWithSomethingToUndoOrRedo) {
    startWithoutIndex();
    EXPECT_FALSE(brimwick->view().statusMenu().undoMenuItem().isEnabled());
    EXPECT_FALSE(brimwick->view().statusMenu().redoMenuItem().isEnabled());
    ASSERT_TRUE(mainLoop.runNext());
    EXPECT_TRUE(brimwick->view().actionsEnabled());
    EXPECT_FALSE(brimwick->view().statusMenu().undoMenuItem().isEnabled());
    EXPECT_FALSE(brimwick->view().statusMenu().redoMenuItem().isEnabled());
}

TEST_F(StartUp, TellsNameVersionAndCreditsInTheAboutBox) {
    start();
    brimwick->view().statusMenu().aboutMenuItemSelected();
    const auto windows = QApplication::topLevelWidgets();
    const auto found = std::ranges::find(windows, "About Brimwick", &QWidget::windowTitle);
    ASSERT_NE(found, windows.end());
    const QString text = qobject_cast<QMessageBox*>(*found)->text();
    EXPECT_TRUE(text.contains(QRegularExpression(R"(Brimwick \d+\.\d+)"))) << text.toStdString();
    EXPECT_TRUE(text.contains("By the Brimwick developers")) << text.toStdString();
}

TEST_F(StartUp, EndsWhileThePickerAndTheAboutBoxShow) {
    start();
    brimwick->view().statusMenu().aboutMenuItemSelected();
    invoke(BWModeOpen);
    mainLoop.post([this] { brimwick->view().statusMenu().quitMenuItemSelected(); });
    QTimer::singleShot(0, [this] { mainLoop.runNext(); });
    constexpr int tooLate = 1;
    QTimer deadline;
    QObject::connect(&deadline, &QTimer::timeout, [] { QCoreApplication::exit(tooLate); });
    deadline.start(std::chrono::seconds(20));
    EXPECT_EQ(QApplication::exec(), 0);
}

} // namespace brimwick
