#include "ui/support/InputSpy.h"
#include "ui/support/ProgramTest.h"
#include "ui/support/ScanCodes.h"

#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QWindow>
#include <qpa/qwindowsysteminterface.h>

#include <gmock/gmock.h>

namespace brimwick {

/// Keys go through the application object, as the desktop delivers them.
class KeyDispatch : public ProgramTest {
  protected:
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
    picker().selectSearchResultsRow(5);
    press(scanDown, Qt::Key_Down, Qt::ShiftModifier);
    press(scanUp, Qt::Key_Up, Qt::ShiftModifier);
    EXPECT_EQ(row(), 5);
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

TEST_F(KeyDispatch, ActsOnAKeyThatAnInputMethodHandsToTheSearchFieldItself) {
    const auto hand = [this](QEvent::Type type, quint32 scanCode, Qt::Key key) {
        QKeyEvent event(type, key, Qt::NoModifier, scanCode, 0, 0);
        QCoreApplication::sendEvent(controls().searchField, &event);
    };
    hand(QEvent::KeyPress, scanDown, Qt::Key_Down);
    EXPECT_EQ(row(), 1);
    hand(QEvent::KeyRelease, scanDown, Qt::Key_Down);
    EXPECT_EQ(row(), 1);
    hand(QEvent::KeyPress, scanReturn, Qt::Key_Return);
    EXPECT_EQ(fileManager.opened.size(), 1U);
}

TEST_F(KeyDispatch, TypesTheKeysThatWaitBeforeTheTextOfAnInputMethod) {
    controls().searchField->clear();
    QWindow* const window = picker().wickWindow().windowHandle();
    QWindowSystemInterface::handleExtendedKeyEvent(window, QEvent::KeyPress, Qt::Key_S, Qt::NoModifier, 39, 0,
                                                   0, "s");
    QWindowSystemInterface::handleExtendedKeyEvent(window, QEvent::KeyPress, Qt::Key_U, Qt::NoModifier, 30, 0,
                                                   0, "u");
    ASSERT_EQ(controls().searchField->text(), "");
    QInputMethodEvent composed;
    composed.setCommitString("é");
    QCoreApplication::sendEvent(controls().searchField, &composed);
    EXPECT_EQ(controls().searchField->text(), "sué");
    QApplication::processEvents();
    EXPECT_EQ(controls().searchField->text(), "sué");
}

TEST_F(KeyDispatch, LeavesTheSelectionAloneWhenAModifierGoesDown) {
    picker().selectSearchResultsRow(5);
    press(50, Qt::Key_Shift, Qt::ShiftModifier);
    press(37, Qt::Key_Control, Qt::ControlModifier);
    EXPECT_EQ(row(), 5);
}

TEST_F(KeyDispatch, HandsOnExactlyTheKeysThatItDoesNotActOn) {
    struct Row {
        const char* what;
        quint32 scanCode;
        Qt::Key key;
        Qt::KeyboardModifiers modifiers;
        bool isHandedOn;
    };
    constexpr Qt::KeyboardModifiers none = Qt::NoModifier;
    const std::vector<Row> rows = {
        {"down", scanDown, Qt::Key_Down, none, false},
        {"up", scanUp, Qt::Key_Up, none, false},
        {"down with Shift", scanDown, Qt::Key_Down, Qt::ShiftModifier, true},
        {"up with Shift", scanUp, Qt::Key_Up, Qt::ShiftModifier, true},
        {"page down", scanPageDown, Qt::Key_PageDown, none, false},
        {"page up", scanPageUp, Qt::Key_PageUp, none, false},
        {"Return", scanReturn, Qt::Key_Return, none, false},
        {"Return with all", scanReturn, Qt::Key_Return,
         Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier, false},
        {"Command-A", scanA, Qt::Key_A, Qt::MetaModifier, false},
        {"A", scanA, Qt::Key_A, none, true},
        {"Command-Z, nothing to undo", scanZ, Qt::Key_Z, Qt::MetaModifier, true},
        {"Tab", scanTab, Qt::Key_Tab, none, true},
        {"Command-W", scanW, Qt::Key_W, Qt::MetaModifier, false},
        {"W", scanW, Qt::Key_W, none, true},
        {"Escape", scanEscape, Qt::Key_Escape, none, false},
    };
    InputSpy spy;
    for (const Row& row : rows) {
        if (!picker().isVisible()) showPicker(BWModeOpen);
        controls().searchField->setFocus();
        spy.tookReached();
        press(row.scanCode, row.key, row.modifiers);
        EXPECT_EQ(spy.tookReached(), row.isHandedOn) << row.what;
    }
}

TEST_F(KeyDispatch, MovesTheSelectionByTheArrowsOfTheKeypad) {
    press(88, Qt::Key_Down, Qt::KeypadModifier);
    EXPECT_EQ(row(), 1);
}

TEST_F(KeyDispatch, ActsOnNoKeyInPhantomMode) {
    picker().selectSearchResultsRow(0);
    picker().wickWindow().setPhantomMode(true);
    press(scanDown, Qt::Key_Down);
    press(scanReturn, Qt::Key_Return);
    EXPECT_EQ(row(), 0);
    EXPECT_TRUE(fileManager.opened.empty());
}

TEST_F(KeyDispatch, GoesByTheNameOfAKeyThatTheUserHasMoved) {
    press(scanCapsLock, Qt::Key_Escape);
    EXPECT_FALSE(picker().isVisible());
}

TEST_F(KeyDispatch, LeavesTheKeyAloneFromWhichTheUserMovedEscapeAway) {
    press(scanEscape, Qt::Key_CapsLock);
    EXPECT_TRUE(picker().isVisible());
    press(scanEscape, Qt::Key_QuoteLeft, Qt::NoModifier, "`");
    EXPECT_TRUE(picker().isVisible());
    EXPECT_TRUE(controls().searchField->text().endsWith("`"));
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
