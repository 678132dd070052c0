#include "platform/linux/x11/KeySynthesis.h"

#include <QWidget>

#include "SelectionTest.h"

namespace brimwick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class Frontmost : public SelectionTest {
  protected:
    void SetUp() override {
        SelectionTest::SetUp();
        shown = folder.makeFolder("shown");
        folder.makeFile("shown/one.txt");
    }
    /// A terminal that writes down every signal and every byte that a key sends it.
    xcb_window_t openTerminal() {
        start({"xterm", "-e", "sh", "-c",
               "trap 'echo interrupted >>\"$0\"' INT; echo ready >\"$0\"; while :; do cat >>\"$0\"; done",
               folder / "terminal"});
        const xcb_window_t terminal = waitForWindow("XTerm", WindowType::normal);
        EXPECT_TRUE(eventually(
            [&] { return isActive(terminal) && TemporaryFolder::read(folder / "terminal") == "ready\n"; }));
        return terminal;
    }
    /// Types a line of its own into the terminal: what came before it has then arrived.
    std::string terminalReceived() {
        outputOf({"xdotool", "type", "--clearmodifiers", "end"});
        press("Return");
        EXPECT_TRUE(eventually(
            [&] { return TemporaryFolder::read(folder / "terminal").find("end\n") != std::string::npos; }));
        return TemporaryFolder::read(folder / "terminal");
    }

    /// A dialog of a program, in front and focused.
    xcb_window_t openDialog(const std::string& windowClass, std::uint32_t processId) {
        const xcb_window_t dialog = xcb_generate_id(observer->get());
        xcb_create_window(observer->get(), XCB_COPY_FROM_PARENT, dialog, observer->root(), 50, 50, 200, 100,
                          0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
        const xcb_atom_t type = observer->atom("_NET_WM_WINDOW_TYPE_DIALOG");
        setProperty(dialog, observer->atom("_NET_WM_WINDOW_TYPE"), XCB_ATOM_ATOM, 32, 1, &type);
        setProperty(dialog, observer->atom("_NET_WM_PID"), XCB_ATOM_CARDINAL, 32, 1, &processId);
        const std::string names = windowClass + '\0' + windowClass + '\0';
        setProperty(dialog, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 8, static_cast<std::uint32_t>(names.size()),
                    names.data());
        xcb_map_window(observer->get(), dialog);
        observer->synchronise();
        bringToFront(dialog);
        return dialog;
    }
    void closeDialog(xcb_window_t dialog) {
        xcb_destroy_window(observer->get(), dialog);
        observer->synchronise();
    }
    void setProperty(xcb_window_t window, xcb_atom_t property, xcb_atom_t type, std::uint8_t format,
                     std::uint32_t count, const void* data) {
        xcb_change_property(observer->get(), XCB_PROP_MODE_REPLACE, window, property, type, format, count,
                            data);
    }

    std::string shown;
};

TEST_F(Frontmost, IsFinderOnTheBareDesktop) {
    EXPECT_EQ(fileManager->frontmostProcessName(), finderProcessName);
    EXPECT_THAT(fileManager->windowTargets(), IsEmpty());
    EXPECT_THAT(selectedPaths(), IsEmpty());
}

TEST_F(Frontmost, IsTheTerminalThatIsInFrontAndNoKeyReachesIt) {
    openTerminal();
    EXPECT_EQ(fileManager->frontmostProcessName(), "XTerm");
    EXPECT_THAT(selectedPaths(), IsEmpty());
    EXPECT_EQ(terminalReceived(), "ready\nend\n");
}

TEST_F(Frontmost, TerminalInFrontGetsNoKeyMeantForTheFileManager) {
    openFileManager(shown, 1);
    const xcb_window_t window = waitForWindow("pcmanfm-qt", WindowType::normal);
    openTerminal();
    EXPECT_FALSE(KeySynthesis::pressCopy(*observer, window));
    EXPECT_EQ(terminalReceived(), "ready\nend\n");
}

TEST_F(Frontmost, NobodyGetsKeysWhileAProgramHoldsTheKeyboard) {
    openFileManager(shown, 1);
    const auto holder = XcbConnection::connect();
    const XcbOwned<xcb_grab_keyboard_reply_t> held(
        xcb_grab_keyboard_reply(holder->get(),
                                xcb_grab_keyboard(holder->get(), 0, holder->root(), XCB_CURRENT_TIME,
                                                  XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC),
                                nullptr));
    ASSERT_TRUE(held && held->status == XCB_GRAB_STATUS_SUCCESS);
    EXPECT_THAT(selectedPaths(), IsEmpty());
    holder->synchronise();
    const XcbOwned<xcb_generic_event_t> key(xcb_poll_for_event(holder->get()));
    EXPECT_FALSE(key);
    xcb_ungrab_keyboard(holder->get(), XCB_CURRENT_TIME);
    holder->synchronise();
    EXPECT_THAT(selectedPaths(), SizeIs(1));
}

TEST_F(Frontmost, IsWhatWasInFrontWhenTheHotKeyWentDown) {
    const xcb_window_t terminal = openTerminal();
    openFileManager(shown, 1);
    fileManager->captureFront();
    bringToFront(terminal);
    EXPECT_EQ(fileManager->frontmostProcessName(), finderProcessName);
    EXPECT_EQ(fileManager->frontmostProcessName(), "XTerm") << "what was captured answers once";
    fileManager->captureFront();
    bringToFront(waitForWindow("pcmanfm-qt", WindowType::normal));
    fileManager->forgetFront();
    EXPECT_EQ(fileManager->frontmostProcessName(), finderProcessName);
}

TEST_F(Frontmost, LeavesOurOwnWindowOutOfAccount) {
    openFileManager(shown, 1);
    QWidget own;
    own.show();
    ASSERT_TRUE(eventually([&] { return isActive(static_cast<xcb_window_t>(own.winId())); }));
    EXPECT_EQ(fileManager->frontmostProcessName(), finderProcessName);
    fileManager->captureFront();
    EXPECT_EQ(fileManager->frontmostProcessName(), finderProcessName);
    const xcb_window_t terminal = openTerminal();
    bringToFront(static_cast<xcb_window_t>(own.winId()));
    EXPECT_EQ(fileManager->frontmostProcessName(), "XTerm");
    fileManager->raise({terminal});
    EXPECT_TRUE(eventually([&] { return isActive(terminal); }));
}

TEST_F(Frontmost, DialogOfAnotherProgramIsNotTheFileManagerBehindIt) {
    openFileManager(shown, 1);
    constexpr std::uint32_t someOtherProcess = 1;
    const xcb_window_t dialog = openDialog("Question", someOtherProcess);
    EXPECT_EQ(fileManager->frontmostProcessName(), "Question");
    closeDialog(dialog);
}

TEST_F(Frontmost, DialogOfTheFileManagerStandsForItsWindow) {
    openFileManager(shown, 1);
    const xcb_window_t window = waitForWindow("pcmanfm-qt", WindowType::normal);
    const auto process = observer->propertyItems(window, observer->atom("_NET_WM_PID"));
    ASSERT_THAT(process, SizeIs(1));
    const xcb_window_t dialog = openDialog("pcmanfm-qt", process.front());
    EXPECT_EQ(fileManager->frontmostProcessName(), finderProcessName);
    closeDialog(dialog);
}

TEST_F(Frontmost, IsFinderAfterAFolderWasOpenedUntilAnotherProgramComesToTheFront) {
    const xcb_window_t terminal = openTerminal();
    QWidget own;
    own.show();
    ASSERT_TRUE(eventually([&] { return isActive(static_cast<xcb_window_t>(own.winId())); }));
    fileManager->openFolder("file:///somewhere");
    EXPECT_THAT(openedFolders, ElementsAre("file:///somewhere"));
    EXPECT_EQ(fileManager->frontmostProcessName(), finderProcessName);
    bringToFront(terminal);
    EXPECT_EQ(fileManager->frontmostProcessName(), finderProcessName) << "the focus fell back while it opens";
    openFileManager(shown, 1);
    EXPECT_EQ(fileManager->frontmostProcessName(), finderProcessName);
    bringToFront(terminal);
    EXPECT_EQ(fileManager->frontmostProcessName(), "XTerm");
}

TEST_F(Frontmost, WindowIsTheFirstTargetAndRaisingItTakesThatVeryWindow) {
    const std::string other = folder.makeFolder("other");
    folder.makeFile("other/two.txt");
    openFileManager(shown, 1);
    const xcb_window_t first = waitForWindow("pcmanfm-qt", WindowType::normal);
    openFileManager(other, 1);
    ASSERT_TRUE(eventually([&] { return fileManager->windowTargets().size() == 2; }));
    const auto targets = fileManager->windowTargets();
    EXPECT_NE(targets[0].window, first);
    EXPECT_EQ(targets[1].window, first);
    fileManager->raise(targets[1]);
    fileManager->activate();
    EXPECT_THAT(selectedPaths(), ElementsAre(shown + "/one.txt"));
    EXPECT_TRUE(isActive(first));
    EXPECT_EQ(fileManager->windowTargets().front().window, first);
}

TEST_F(Frontmost, ActivateGivesTheFileManagerTheFocusAgain) {
    openFileManager(shown, 1);
    const xcb_window_t window = waitForWindow("pcmanfm-qt", WindowType::normal);
    openTerminal();
    fileManager->activate();
    EXPECT_TRUE(eventually([&] { return isActive(window); }));
}

TEST_F(Frontmost, WindowThatVanishedIsNoTargetAndNoHarm) {
    openFileManager(shown, 1);
    const auto targets = fileManager->windowTargets();
    ASSERT_THAT(targets, SizeIs(1));
    xcb_kill_client(observer->get(), static_cast<xcb_window_t>(targets[0].window));
    observer->synchronise();
    fileManager->raise(targets[0]);
    fileManager->activate();
    EXPECT_THAT(selectedPaths(), IsEmpty());
    EXPECT_TRUE(eventually([&] { return fileManager->windowTargets().empty(); }));
}

} // namespace
} // namespace brimwick
