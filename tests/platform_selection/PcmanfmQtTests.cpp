#include "SelectionTest.h"

namespace brimwick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using testing::UnorderedElementsAre;

class PcmanfmQt : public SelectionTest {
  protected:
    /// Clicks where no icon is.
    void deselect() {
        const xcb_window_t window = waitForWindow("pcmanfm-qt", WindowType::normal);
        outputOf({"xdotool", "mousemove", "--window", std::to_string(window), "380", "330", "click", "1"});
        // The file manager itself then copies a name as text.
        ASSERT_TRUE(eventually([&] {
            press("ctrl+c");
            return !clipboard("UTF8_STRING").empty() && clipboard("text/uri-list").empty();
        }));
    }

    std::string shown = folder.makeFolder("shown");
};

TEST_F(PcmanfmQt, GivesItsSelectionWithItsWindowInFront) {
    folder.makeFile("shown/one.txt");
    openFileManager(shown, 1);
    EXPECT_TRUE(fileManager->capability().available);
    EXPECT_EQ(fileManager->frontmostProcessName(), finderProcessName);
    EXPECT_THAT(selectedPaths(), ElementsAre(shown + "/one.txt"));
}

TEST_F(PcmanfmQt, GivesNamesWithNewlineForeignLettersPercentAndInvalidBytesWhileModifiersAreHeld) {
    const std::string newline = folder.makeFile("shown/new\nline.txt");
    const std::string foreign = folder.makeFile("shown/\xE6\x97\xA5\xE6\x9C\xAC.txt");
    const std::string percent = folder.makeFile("shown/100%#?&.txt");
    const std::string invalid = folder.makeFile("shown/\xFF\xFE.txt");
    openFileManager(shown, 4);
    outputOf({"xdotool", "keydown", "Control_L", "keydown", "Super_L"});
    const auto paths = selectedPaths();
    outputOf({"xdotool", "keyup", "Super_L", "keyup", "Control_L"});
    EXPECT_THAT(paths, UnorderedElementsAre(newline, foreign, percent, invalid));
}

TEST_F(PcmanfmQt, GivesFoldersToo) {
    folder.makeFolder("shown/folder");
    openFileManager(shown, 1);
    EXPECT_THAT(selectedPaths(), ElementsAre(shown + "/folder"));
}

TEST_F(PcmanfmQt, WithNothingSelectedGivesNothingAndTheClipboardIsGivenBack) {
    folder.makeFile("shown/one.txt");
    openFileManager(shown, 1);
    deselect();
    offerClipboard("UTF8_STRING", "the user's own text");
    EXPECT_THAT(selectedPaths(), IsEmpty());
    EXPECT_EQ(clipboard("UTF8_STRING"), "the user's own text");
}

TEST_F(PcmanfmQt, GivesWhatWasSelectedThisMoment) {
    folder.makeFile("shown/one.txt");
    openFileManager(shown, 1);
    for (int time = 0; time < 5; ++time) {
        deselect();
        press("ctrl+a");
        ASSERT_THAT(selectedPaths(), SizeIs(1)) << "time " << time;
    }
}

TEST_F(PcmanfmQt, IsReadAsOftenAsOneLikes) {
    folder.makeFile("shown/one.txt");
    folder.makeFile("shown/two.txt");
    openFileManager(shown, 2);
    offerClipboard("UTF8_STRING", "text");
    for (int time = 0; time < 20; ++time) ASSERT_THAT(selectedPaths(), SizeIs(2)) << "time " << time;
    EXPECT_EQ(clipboard("UTF8_STRING"), "text");
}

TEST_F(PcmanfmQt, IsReadWithALayoutThatHasTheLetterElsewhere) {
    folder.makeFile("shown/one.txt");
    openFileManager(shown, 1);
    outputOf({"setxkbmap", "us,ru", "-variant", "dvorak,", "-option", ""});
    EXPECT_THAT(selectedPaths(), SizeIs(1)) << "Dvorak";
    outputOf({"setxkbmap", "ru,us", "-variant", ",dvorak"});
    EXPECT_THAT(selectedPaths(), SizeIs(1)) << "Cyrillic, with Dvorak as another layout";
    outputOf({"setxkbmap", "us", "-variant", ""});
    EXPECT_THAT(selectedPaths(), SizeIs(1)) << "plain again";
}

TEST_F(PcmanfmQt, IsBroughtToTheFrontForItsSelectionToBeRead) {
    folder.makeFile("shown/one.txt");
    openFileManager(shown, 1);
    start({"xterm", "-e", "cat"});
    const xcb_window_t terminal = waitForWindow("XTerm", WindowType::normal);
    ASSERT_TRUE(eventually([&] { return isActive(terminal); }));
    EXPECT_THAT(selectedPaths(), SizeIs(1));
    EXPECT_FALSE(isActive(terminal));
}

TEST_F(PcmanfmQt, DesktopIconsAreRead) {
    const std::string home = getenv("HOME");
    const TemporaryFolder elsewhere;
    std::filesystem::create_directories(home + "/Desktop");
    std::ofstream(home + "/Desktop/on the desktop.txt") << "content";
    start({"pcmanfm-qt", "--profile=test", "--desktop"});
    const xcb_window_t desktop = waitForWindow("pcmanfm-qt", WindowType::desktop);
    ASSERT_NE(desktop, xcb_window_t{XCB_NONE});
    fileManager->selectDesktop();
    ASSERT_TRUE(eventually([&] { return isActive(desktop); }));
    EXPECT_EQ(fileManager->frontmostProcessName(), finderProcessName);
    EXPECT_THAT(fileManager->windowTargets(), IsEmpty());
    EXPECT_TRUE(eventually([&] {
        press("ctrl+a");
        press("ctrl+c");
        return clipboard("text/uri-list").find("on%20the%20desktop.txt") != std::string::npos;
    }));
    offerClipboard("UTF8_STRING", "text");
    EXPECT_THAT(selectedPaths(), ElementsAre(home + "/Desktop/on the desktop.txt"));
    EXPECT_EQ(clipboard("UTF8_STRING"), "text");
}

TEST_F(PcmanfmQt, DesktopIsTakenWhenTheWindowHasNothingSelectedAndTheFocusReturnsIfItHasNothingEither) {
    const std::string home = getenv("HOME");
    std::filesystem::create_directories(home + "/Desktop");
    std::ofstream(home + "/Desktop/on the desktop.txt") << "content";
    folder.makeFile("shown/one.txt");
    start({"pcmanfm-qt", "--profile=test", "--desktop"});
    const xcb_window_t desktop = waitForWindow("pcmanfm-qt", WindowType::desktop);
    openFileManager(shown, 1);
    const xcb_window_t window = waitForWindow("pcmanfm-qt", WindowType::normal);
    deselect();

    ASSERT_THAT(selectedPaths(), IsEmpty());
    fileManager->selectDesktop();
    EXPECT_THAT(selectedPaths(), IsEmpty());
    EXPECT_TRUE(eventually([&] { return isActive(window); }));

    bringToFront(desktop);
    EXPECT_TRUE(eventually([&] {
        press("ctrl+a");
        press("ctrl+c");
        return clipboard("text/uri-list").find("on%20the%20desktop.txt") != std::string::npos;
    }));
    bringToFront(window);
    ASSERT_THAT(selectedPaths(), IsEmpty());
    fileManager->selectDesktop();
    EXPECT_THAT(selectedPaths(), ElementsAre(home + "/Desktop/on the desktop.txt"));
    fileManager->activate();
    EXPECT_TRUE(eventually([&] { return isActive(window) || isActive(desktop); }));
}

} // namespace
} // namespace brimwick
