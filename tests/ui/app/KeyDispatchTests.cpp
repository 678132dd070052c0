#include "ui/support/ProgramTest.h"

#include <QKeyEvent>
#include <QWindow>

#include <gmock/gmock.h>

namespace brimwick {

/// Keys go through the application object, as the desktop delivers them.
class KeyDispatch : public ProgramTest {
  protected:
    static constexpr quint32 scanA = 38;
    static constexpr quint32 scanZ = 52;
    static constexpr quint32 scanW = 25;
    static constexpr quint32 scanReturn = 36;
    static constexpr quint32 scanEscape = 9;
    static constexpr quint32 scanUp = 111;
    static constexpr quint32 scanDown = 116;
    static constexpr quint32 scanPageUp = 112;
    static constexpr quint32 scanPageDown = 117;

    void SetUp() override {
        for (int number = 10; number < 40; ++number) home.makeFolder("root/box " + std::to_string(number));
        storePreferences({home / "root"});
        start();
        invoke(BWModeOpen);
        QApplication::processEvents();
        ASSERT_EQ(QApplication::activeWindow(), &picker().wickWindow());
        type("box");
    }
    /// True when the window, or something in it, made use of the event.
    bool send(QEvent::Type type, quint32 scanCode, Qt::Key key,
              Qt::KeyboardModifiers modifiers = Qt::NoModifier, const QString& text = {}) {
        QKeyEvent event(type, key, modifiers, scanCode, 0, 0, text);
        event.ignore();
        QCoreApplication::sendEvent(picker().wickWindow().windowHandle(), &event);
        return event.isAccepted();
    }
    void press(quint32 scanCode, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier,
               const QString& text = {}) {
        send(QEvent::KeyPress, scanCode, key, modifiers, text);
    }
    int row() { return controls().searchResultsTableView->selectedRow(); }
};

TEST_F(KeyDispatch, MovesTheSelectionByTheArrowKeys) {
    press(scanDown, Qt::Key_Down);
    press(scanDown, Qt::Key_Down);
    EXPECT_EQ(row(), 2);
    press(scanUp, Qt::Key_Up);
    EXPECT_EQ(row(), 1);
    EXPECT_TRUE(controls().searchField->hasFocus());
}

TEST_F(KeyDispatch, PassesAShiftedArrowOnAndSwallowsEveryReleaseOfIt) {
    press(scanDown, Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(row(), 0);
    EXPECT_TRUE(send(QEvent::KeyRelease, scanDown, Qt::Key_Down, Qt::ShiftModifier));
    EXPECT_TRUE(send(QEvent::KeyRelease, scanDown, Qt::Key_Down));
}

TEST_F(KeyDispatch, MovesByPagesOfTheListsHeight) {
    const int page = controls().searchResultsTableView->height() / 48;
    ASSERT_GT(page, 1);
    press(scanPageDown, Qt::Key_PageDown);
    EXPECT_EQ(row(), page);
    press(scanPageDown, Qt::Key_PageDown, Qt::ShiftModifier);
    EXPECT_EQ(row(), 2 * page);
    press(scanPageUp, Qt::Key_PageUp);
    EXPECT_EQ(row(), page);
}

TEST_F(KeyDispatch, ConfirmsByReturnWhateverModifiersAreHeld) {
    for (const Qt::KeyboardModifier held :
         {Qt::NoModifier, Qt::ShiftModifier, Qt::ControlModifier, Qt::AltModifier, Qt::MetaModifier})
        press(scanReturn, Qt::Key_Return, held);
    EXPECT_EQ(fileManager.opened.size(), 5U);
}

TEST_F(KeyDispatch, ClosesByEscapeAndGivesTheFileManagerTheFocus) {
    press(scanEscape, Qt::Key_Escape);
    EXPECT_FALSE(picker().isVisible());
    EXPECT_THAT(fileManager.calls, testing::ElementsAre("activate"));
}

TEST_F(KeyDispatch, ClosesByCommandW) {
    press(scanW, Qt::Key_W, Qt::MetaModifier, "w");
    EXPECT_FALSE(picker().isVisible());
}

TEST_F(KeyDispatch, LeavesForThePreferencesByCommandComma) {
    press(59, Qt::Key_Comma, Qt::NoModifier, ",");
    EXPECT_TRUE(picker().isVisible());
    press(59, Qt::Key_Comma, Qt::MetaModifier, ",");
    EXPECT_TRUE(picker().isInPhantomMode());
    EXPECT_TRUE(fileManager.calls.empty());
}

TEST_F(KeyDispatch, TakesCtrlForCommandByTheLetterThatTheLayoutPrints) {
    // On a French keyboard the key at the place of W prints Z.
    press(scanW, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_TRUE(picker().isVisible());
    press(scanZ, Qt::Key_W, Qt::ControlModifier);
    EXPECT_FALSE(picker().isVisible());
}

TEST_F(KeyDispatch, SelectsAllTheSearchText) {
    controls().searchField->deselect();
    press(scanA, Qt::Key_A, Qt::MetaModifier, "a");
    EXPECT_EQ(controls().searchField->selectedText(), "box");
    EXPECT_EQ(controls().searchField->text(), "box");
}

TEST_F(KeyDispatch, UndoesTypingAndPassesOnAnUndoOfNothing) {
    controls().searchField->setText("box");
    controls().searchField->insert(" 1");
    ASSERT_TRUE(controls().searchField->isUndoAvailable());
    press(scanZ, Qt::Key_Z, Qt::MetaModifier, "z");
    EXPECT_EQ(controls().searchField->text(), "box");

    controls().searchField->setText("box");
    ASSERT_FALSE(controls().searchField->isUndoAvailable());
    picker().selectSearchResultsRow(5);
    press(scanZ, Qt::Key_Z, Qt::MetaModifier);
    EXPECT_EQ(row(), 0) << "the key was passed on, and the results were brought up to date before";
}

TEST_F(KeyDispatch, CutsCopiesAndPastesInTheSearchField) {
    controls().searchField->selectAll();
    press(53, Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(controls().searchField->text(), "");
    press(55, Qt::Key_V, Qt::MetaModifier, "v");
    press(55, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(controls().searchField->text(), "boxbox");
    controls().searchField->selectAll();
    press(54, Qt::Key_C, Qt::MetaModifier, "c");
    EXPECT_EQ(controls().searchField->text(), "boxbox");
}

TEST_F(KeyDispatch, TypesOtherKeysIntoTheSearchField) {
    controls().searchField->end(false);
    press(11, Qt::Key_2, Qt::NoModifier, "2");
    EXPECT_EQ(controls().searchField->text(), "box2");
    EXPECT_EQ(prompt(), "No folders found.");
}

TEST_F(KeyDispatch, LeavesTheSelectionAloneWhenAModifierGoesDown) {
    picker().selectSearchResultsRow(5);
    press(50, Qt::Key_Shift, Qt::ShiftModifier);
    press(37, Qt::Key_Control, Qt::ControlModifier);
    EXPECT_EQ(row(), 5);
}

TEST_F(KeyDispatch, OnlyClaimsAKeyThatMayBeAShortcutAndActsOnThePress) {
    EXPECT_TRUE(send(QEvent::ShortcutOverride, scanEscape, Qt::Key_Escape));
    EXPECT_TRUE(picker().isVisible());
}

TEST_F(KeyDispatch, ActsOnReturnOfTheKeypadToo) {
    press(104, Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_EQ(fileManager.opened.size(), 1U);
}

TEST_F(KeyDispatch, KnowsTheNamedKeysOfAKeyboardWithoutScanCodes) {
    press(0, Qt::Key_Down);
    EXPECT_EQ(row(), 1);
}

} // namespace brimwick
