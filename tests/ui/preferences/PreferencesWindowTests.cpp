#include "ui/support/InputSpy.h"
#include "ui/support/PreferencesTest.h"
#include "ui/support/ScanCodes.h"

#include <QKeyEvent>
#include <QListWidget>
#include <QPushButton>
#include <QTabWidget>
#include <QWindow>

#include <gmock/gmock.h>

namespace brimwick {

namespace {

constexpr std::uint32_t controlCommandKeys = HotKeyModifier::control | HotKeyModifier::command;

} // namespace

/// The preferences window of the whole program, with keys as the desktop delivers them.
class PreferencesWindow : public PreferencesTest {
  protected:
    void SetUp() override {
        keyboardLayout.put(0, u"a");
        keyboardLayout.put(0, u"A", ModifierFlag::shift);
        keyboardLayout.put(4, u"h");
        keyboardLayout.put(4, u"H", ModifierFlag::shift);
        keyboardLayout.put(13, u"w");
        keyboardLayout.put(46, u"m");
        keyboardLayout.put(35, u"p");
        keyboardLayout.put(31, u"o");
        home.makeFolder("root/box");
        storePreferences({home / "root"});
        start();
        show();
    }
    void show() { showPreferences(); }
};

TEST_F(PreferencesWindow, ShowsTheThreeHotKeysAndTheIndexedFolders) {
    EXPECT_EQ(shown().hotKeyTextView->text(), "^⌘M");
    EXPECT_EQ(shown().bwCopyModeHotKeyTextView->text(), "^⌘P");
    EXPECT_EQ(shown().openModeHotKeyTextView->text(), "^⌘O");
    ASSERT_EQ(shown().indexedFoldersTableView->count(), 1);
    EXPECT_EQ(shown().indexedFoldersTableView->item(0)->text().toStdString(), home / "root");
    EXPECT_FALSE(shown().hotKeyTextView->ringIsHidden());
}

TEST_F(PreferencesWindow, GoesRoundByTabAndShowsWhereTheFocusIs) {
    const std::vector<BWTextView*> fields = {shown().hotKeyTextView, shown().bwCopyModeHotKeyTextView,
                                             shown().openModeHotKeyTextView};
    for (std::int32_t index = 0; index < 10; ++index) {
        EXPECT_EQ(focusedIndex(), index % 5);
        for (std::size_t field = 0; field < fields.size(); ++field)
            EXPECT_EQ(fields[field]->ringIsHidden(), static_cast<std::int32_t>(field) != index % 5);
        EXPECT_EQ(shown().indexedFoldersTableView->hasFocus(), index % 5 == 3);
        EXPECT_EQ(shown().preferencesWindowCloseButton->isDefault(), index % 5 == 4);
        tab();
    }
}

TEST_F(PreferencesWindow, GoesBackByShiftTabToTheCloseButtonWhichReturnAndSpacePress) {
    tab(true);
    EXPECT_EQ(focusedIndex(), 4);
    EXPECT_TRUE(shown().preferencesWindowCloseButton->isDefault());
    press(scanReturn, Qt::Key_Return);
    EXPECT_TRUE(preferences().isInPhantomMode());
    show();
    EXPECT_EQ(focusedIndex(), 0) << "the focus begins at the first field again";
    press(scanReturn, Qt::Key_Return);
    EXPECT_FALSE(preferences().isInPhantomMode()) << "elsewhere Return does nothing";
    tab(true);
    press(scanSpace, Qt::Key_Space);
    EXPECT_TRUE(preferences().isInPhantomMode());
}

TEST_F(PreferencesWindow, KeepsTheSelectionOfTheListWhenTheFocusComesToIt) {
    shown().indexedFoldersTableView->addItem("another");
    shown().indexedFoldersTableView->setCurrentRow(1);
    for (int times = 0; times < 3; ++times) tab();
    EXPECT_TRUE(shown().indexedFoldersTableView->hasFocus());
    ASSERT_EQ(shown().indexedFoldersTableView->selectedItems().size(), 1);
    EXPECT_EQ(shown().indexedFoldersTableView->selectedItems().front()->text(), "another");
}

TEST_F(PreferencesWindow, RecordsForTheFieldThatWasClicked) {
    shown().bwCopyModeHotKeyTextView->setFocus(Qt::MouseFocusReason);
    EXPECT_EQ(focusedIndex(), 1);
    EXPECT_TRUE(shown().hotKeyTextView->ringIsHidden());
    EXPECT_FALSE(shown().bwCopyModeHotKeyTextView->ringIsHidden());
    press(scanH, Qt::Key_H, Qt::MetaModifier | Qt::ShiftModifier);
    EXPECT_EQ(shown().bwCopyModeHotKeyTextView->text(), "⌘⇧H");
    EXPECT_TRUE(hotKeys.pressAndRelease(4, HotKeyModifier::command | HotKeyModifier::shift));
    EXPECT_FALSE(hotKeys.pressAndRelease(35, controlCommandKeys));
}

TEST_F(PreferencesWindow, RecordsForTheFieldWhoseClickBroughtTheWindowToTheFront) {
    QWidget other;
    other.show();
    other.activateWindow();
    QApplication::processEvents();
    // The press comes before the keyboard does.
    shown().bwCopyModeHotKeyTextView->setFocus(Qt::MouseFocusReason);
    window().activateWindow();
    QApplication::processEvents();
    EXPECT_EQ(focusedIndex(), 1);
    EXPECT_TRUE(shown().hotKeyTextView->ringIsHidden());
    EXPECT_FALSE(shown().bwCopyModeHotKeyTextView->ringIsHidden());
}

TEST_F(PreferencesWindow, KeepsItsPlaceWhileAnotherWindowIsInFront) {
    const auto leaveAndComeBack = [this] {
        QWidget other;
        other.show();
        other.activateWindow();
        QApplication::processEvents();
        window().activateWindow();
        QApplication::processEvents();
    };
    tab();
    leaveAndComeBack();
    EXPECT_EQ(focusedIndex(), 1);
    shown().indexedFoldersTableView->selectRow(0);
    preferences().indexedFolders().showIndexedFolderInFinder();
    leaveAndComeBack();
    EXPECT_EQ(focusedIndex(), 2) << "after a command of the list";
    shown().preferencesWindowTabView->setCurrentIndex(1);
    for (int times = 0; times < 12; ++times) tab();
    leaveAndComeBack();
    EXPECT_EQ(focusedIndex(), 12) << "where a box before it has the keyboard";
}

TEST_F(PreferencesWindow, StoresTheFlagsWithTheKeysOfTheModifiers) {
    send(QEvent::KeyPress, scanSuper, Qt::Key_Super_L, Qt::MetaModifier);
    send(QEvent::KeyPress, scanRightShift, Qt::Key_Shift, Qt::MetaModifier | Qt::ShiftModifier);
    press(scanH, Qt::Key_H, Qt::MetaModifier | Qt::ShiftModifier);
    const auto flags = [this] {
        const PropertyListDictionary stored = storedPreferences();
        return *stored.find("HotKeyModifierFlags");
    };
    EXPECT_EQ(flags(), PropertyListValue{std::to_string(0x100000 | 0x20000 | 0x100 | 0x8 | 0x4)});
    send(QEvent::KeyRelease, scanRightShift, Qt::Key_Shift, Qt::MetaModifier);
    press(scanH, Qt::Key_H, Qt::MetaModifier | Qt::ShiftModifier);
    EXPECT_EQ(flags(), PropertyListValue{std::to_string(0x100000 | 0x20000 | 0x100 | 0x8 | 0x2)});
}

TEST_F(PreferencesWindow, ForgetsAModifierThatWentUpElsewhere) {
    send(QEvent::KeyPress, scanRightShift, Qt::Key_Shift, Qt::ShiftModifier);
    press(scanTab, Qt::Key_Tab);
    press(scanH, Qt::Key_H, Qt::ShiftModifier);
    const PropertyListDictionary stored = storedPreferences();
    EXPECT_EQ(*stored.find("CopyModeHotKeyModifierFlags"),
              PropertyListValue{std::to_string(0x20000 | 0x100 | 0x2)});
}

TEST_F(PreferencesWindow, StoresCapsLockWithTheFlags) {
    constexpr quint32 lock = 2;
    QKeyEvent event(QEvent::KeyPress, Qt::Key_H, Qt::ShiftModifier, scanH, 0, lock);
    QCoreApplication::sendEvent(window().windowHandle(), &event);
    const PropertyListDictionary stored = storedPreferences();
    EXPECT_EQ(*stored.find("HotKeyModifierFlags"),
              PropertyListValue{std::to_string(0x10000 | 0x20000 | 0x100 | 0x2)});
}

TEST_F(PreferencesWindow, IsShownByTheMenuInThePlaceOfThePicker) {
    preferences().hidePreferences();
    invoke(BWModeOpen);
    ASSERT_TRUE(picker().isVisible());
    for (QAction* item : brimwick->view().statusMenu().statusMenu().actions())
        if (item->text() == "Preferences...") item->trigger();
    EXPECT_TRUE(picker().isInPhantomMode());
    EXPECT_TRUE(window().isVisible());
}

TEST_F(PreferencesWindow, KeepsTheSizeThatTheUserGaveIt) {
    window().resize(700, 650);
    preferences().hidePreferences();
    show();
    EXPECT_EQ(window().size(), QSize(700, 650));
}

TEST_F(PreferencesWindow, SaysWhyAKeyIsNotRecordedBelowItsField) {
    press(scanA, Qt::Key_A, Qt::MetaModifier | Qt::ShiftModifier);
    ErrorLabel* label = shown().hotKeyErrorMessageTextField;
    EXPECT_TRUE(label->showsMessage());
    EXPECT_EQ(label->text(), "Not allowed");
    EXPECT_DOUBLE_EQ(label->alpha(), 1);
    mainLoop.pass(std::chrono::milliseconds(50 * 51));
    EXPECT_NEAR(label->alpha(), 0.5, 0.01);
    const QColor colour = label->palette().color(QPalette::WindowText);
    EXPECT_EQ(colour.rgb(), QColor(Qt::red).rgb());
    EXPECT_NEAR(colour.alphaF(), 0.5, 0.01);
    mainLoop.pass(std::chrono::milliseconds(50 * 50));
    EXPECT_FALSE(label->showsMessage());
    EXPECT_DOUBLE_EQ(label->alpha(), 1);
}

TEST_F(PreferencesWindow, TellsOfADuplicateBelowTheFocusedFieldAndKeepsTheHotKey) {
    tab();
    tab();
    EXPECT_TRUE(hotKeys.pressAndRelease(46, controlCommandKeys));
    EXPECT_EQ(shown().openModeHotKeyErrorMessageTextField->text(), "Duplicate shortcut");
    EXPECT_TRUE(shown().openModeHotKeyErrorMessageTextField->showsMessage());
    EXPECT_FALSE(picker().isVisible());
    preferences().hidePreferences();
    selectFile("a.txt");
    EXPECT_TRUE(hotKeys.pressAndRelease(46, controlCommandKeys));
    EXPECT_TRUE(picker().isVisible());
    EXPECT_EQ(picker().mode(), BWModeMove);
}

TEST_F(PreferencesWindow, TellsOfADuplicateWhileTheHotKeyHasTakenTheKeyboard) {
    windowSystem.focused = window().winId();
    QWidget other;
    other.show();
    other.activateWindow();
    QApplication::processEvents();
    ASSERT_FALSE(window().isKeyWindow());
    EXPECT_TRUE(hotKeys.pressAndRelease(46, controlCommandKeys));
    EXPECT_EQ(shown().hotKeyErrorMessageTextField->text(), "Duplicate shortcut");
}

TEST_F(PreferencesWindow, ShowsWhichHotKeyIsNotActiveAndWhy) {
    hotKeys.takenByOthers.insert({4, HotKeyModifier::command});
    press(scanH, Qt::Key_H, Qt::MetaModifier);
    EXPECT_EQ(shown().hotKeyErrorMessageTextField->text(), "Can't register");
    EXPECT_EQ(shown().hotKeyTextView->text(), "^⌘M");
    mainLoop.pass(std::chrono::milliseconds(50 * 101));
    EXPECT_EQ(shown().hotKeyErrorMessageTextField->text(), "Not active. taken by another program");
    EXPECT_EQ(shown().bwCopyModeHotKeyErrorMessageTextField->text(), "");

    hotKeys.takenByOthers.clear();
    press(scanH, Qt::Key_H, Qt::MetaModifier);
    EXPECT_EQ(shown().hotKeyErrorMessageTextField->text(), "");
}

TEST_F(PreferencesWindow, ClosesByCommandWAndEscapeFromAnyControl) {
    for (int control = 0; control < 5; ++control) {
        for (int times = 0; times < control; ++times) tab();
        press(scanW, Qt::Key_W, Qt::MetaModifier);
        EXPECT_TRUE(preferences().isInPhantomMode()) << control;
        show();
        for (int times = 0; times < control; ++times) tab();
        press(scanEscape, Qt::Key_Escape);
        EXPECT_TRUE(preferences().isInPhantomMode()) << control;
        show();
    }
}

TEST_F(PreferencesWindow, RecordsCtrlWInAFieldAndClosesByItElsewhere) {
    press(scanW, Qt::Key_W, Qt::ControlModifier);
    EXPECT_FALSE(preferences().isInPhantomMode());
    EXPECT_EQ(shown().hotKeyTextView->text(), "^W");
    for (int times = 0; times < 3; ++times) tab();
    press(scanW, Qt::Key_W, Qt::ControlModifier);
    EXPECT_TRUE(preferences().isInPhantomMode());
}

TEST_F(PreferencesWindow, RecordsNeitherEqualsNorMinus) {
    // They could be recorded, by what they type.
    keyboardLayout.put(KeyCode::equals, u"=");
    keyboardLayout.put(KeyCode::minus, u"-");
    press(scanEquals, Qt::Key_Equal, Qt::MetaModifier);
    press(scanMinus, Qt::Key_Minus, Qt::MetaModifier);
    EXPECT_EQ(shown().hotKeyTextView->text(), "^⌘M");
    EXPECT_FALSE(shown().hotKeyErrorMessageTextField->showsMessage());
}

TEST_F(PreferencesWindow, HandsOnExactlyTheKeysThatItDoesNotActOn) {
    struct Row {
        const char* what;
        std::int32_t control;
        quint32 scanCode;
        Qt::Key key;
        Qt::KeyboardModifiers modifiers;
        bool isHandedOn;
    };
    constexpr std::int32_t list = 3;
    constexpr Qt::KeyboardModifiers none = Qt::NoModifier;
    const std::vector<Row> rows = {
        {"a key that is recorded", 0, scanH, Qt::Key_H, Qt::MetaModifier | Qt::ShiftModifier, false},
        {"a key that is refused", 0, scanA, Qt::Key_A, Qt::MetaModifier, false},
        {"a key without a modifier", 1, scanH, Qt::Key_H, none, false},
        {"a key that types nothing", 0, scanUp, Qt::Key_Up, none, true},
        {"the same in the list", list, scanUp, Qt::Key_Up, none, true},
        {"a letter in the list", list, scanH, Qt::Key_H, Qt::MetaModifier, true},
        {"equals", 0, scanEquals, Qt::Key_Equal, none, false},
        {"minus in the list", list, scanMinus, Qt::Key_Minus, none, false},
        {"Return in the list", list, scanReturn, Qt::Key_Return, none, false},
        {"Space in a field", 2, scanSpace, Qt::Key_Space, none, false},
        {"Tab", 2, scanTab, Qt::Key_Tab, none, false},
        {"Tab back", 2, scanTab, Qt::Key_Backtab, Qt::ShiftModifier, false},
        {"Command-W", 0, scanW, Qt::Key_W, Qt::MetaModifier, false},
        {"Escape", list, scanEscape, Qt::Key_Escape, none, false},
    };
    InputSpy spy;
    for (const Row& row : rows) {
        show();
        for (std::int32_t times = 0; times < row.control; ++times) tab();
        spy.tookReached();
        send(QEvent::KeyPress, row.scanCode, row.key, row.modifiers);
        EXPECT_EQ(spy.tookReached(), row.isHandedOn) << row.what;
    }
}

TEST_F(PreferencesWindow, SaysThatAHotKeyNeedsAModifier) {
    press(scanH, Qt::Key_H);
    EXPECT_EQ(shown().hotKeyErrorMessageTextField->text(), "Needs ⇧, ^, ⌥ and/or ⌘");
}

TEST_F(PreferencesWindow, GoesByTheNameOfAKeyThatTheUserHasMoved) {
    press(scanCapsLock, Qt::Key_Escape);
    EXPECT_TRUE(preferences().isInPhantomMode());
}

TEST_F(PreferencesWindow, PassesAReleaseOn) {
    EXPECT_TRUE(send(QEvent::KeyPress, scanTab, Qt::Key_Tab, Qt::NoModifier));
    EXPECT_FALSE(send(QEvent::KeyRelease, scanTab, Qt::Key_Tab, Qt::NoModifier));
}

TEST_F(PreferencesWindow, TakesNoKeyAndNoOtherEventInPhantomMode) {
    shown().indexedFoldersTableView->clearSelection();
    for (int times = 0; times < 3; ++times) tab();
    preferences().hidePreferences();
    send(QEvent::KeyPress, scanSpace, Qt::Key_Space, Qt::NoModifier);
    EXPECT_TRUE(shown().indexedFoldersTableView->selectedItems().isEmpty());
    for (int times = 0; times < 2; ++times) tab();
    press(scanH, Qt::Key_H, Qt::MetaModifier);
    EXPECT_EQ(shown().hotKeyTextView->text(), "^⌘M");
    EXPECT_TRUE(hotKeys.pressAndRelease(46, controlCommandKeys));
    EXPECT_FALSE(shown().hotKeyErrorMessageTextField->showsMessage());
    EXPECT_EQ(window().alpha(), 0);
    EXPECT_FALSE(clickReaches(window()));
    show();
    EXPECT_TRUE(clickReaches(window()));
}

TEST_F(PreferencesWindow, IsNeverDestroyedByTheTitleBar) {
    window().close();
    EXPECT_TRUE(preferences().isInPhantomMode());
    EXPECT_FALSE(window().isVisible());
    show();
    const QRect visible = window().screen()->availableGeometry();
    EXPECT_NEAR(window().frameGeometry().center().x(), visible.center().x(), 2);
    EXPECT_NEAR(window().frameGeometry().center().y(), visible.center().y(), 2);
}

TEST_F(PreferencesWindow, TakesThePlaceOfThePicker) {
    preferences().hidePreferences();
    invoke(BWModeOpen);
    QApplication::processEvents();
    ASSERT_TRUE(picker().isVisible());
    QKeyEvent comma(QEvent::KeyPress, Qt::Key_Comma, Qt::ControlModifier, 59, 0, 0, ",");
    QCoreApplication::sendEvent(picker().wickWindow().windowHandle(), &comma);
    QApplication::processEvents();
    EXPECT_TRUE(picker().isInPhantomMode());
    EXPECT_FALSE(preferences().isInPhantomMode());
    EXPECT_TRUE(fileManager.calls.empty())
        << "the picker was not closed, which would bring the files to the front";

    invoke(BWModeOpen);
    EXPECT_TRUE(preferences().isInPhantomMode());
}

TEST_F(PreferencesWindow, ShowsTheHotKeysInTheMenuAndNewOnesAtOnce) {
    const auto shortcut = [this](const char* title) {
        for (const QAction* item : brimwick->view().statusMenu().statusMenu().actions())
            if (item->text() == title) return item->shortcut().toString(QKeySequence::PortableText);
        return QString("no such item");
    };
    EXPECT_EQ(shortcut("Move Files..."), "Meta+Ctrl+M");
    EXPECT_EQ(shortcut("Copy Files..."), "Meta+Ctrl+P");
    EXPECT_EQ(shortcut("Open Folder..."), "Meta+Ctrl+O");
    press(scanM, Qt::Key_M, Qt::ControlModifier | Qt::AltModifier);
    EXPECT_EQ(shortcut("Move Files..."), "Ctrl+Alt+M");
    EXPECT_EQ(shortcut("Copy Files..."), "Meta+Ctrl+P");
    EXPECT_EQ(shortcut("Open Folder..."), "Meta+Ctrl+O");
    press(scanH, Qt::Key_H, Qt::ControlModifier | Qt::AltModifier);
    EXPECT_EQ(shortcut("Move Files..."), "Ctrl+Alt+H");
    EXPECT_EQ(shown().hotKeyTextView->text(), "^⌥H");
    keyboardLayout.put(4, u"р");
    keyboardLayout.change();
    EXPECT_EQ(shortcut("Move Files..."), "Ctrl+Alt+Р");
    EXPECT_EQ(shown().hotKeyTextView->text(), "^⌥Р");
}

TEST_F(PreferencesWindow, OnlyClaimsAKeyThatMayBeAShortcutAndActsOnThePress) {
    EXPECT_TRUE(send(QEvent::ShortcutOverride, scanH, Qt::Key_H, Qt::MetaModifier));
    EXPECT_EQ(shown().hotKeyTextView->text(), "^⌘M");
    EXPECT_TRUE(send(QEvent::ShortcutOverride, scanEscape, Qt::Key_Escape, Qt::NoModifier));
    EXPECT_FALSE(preferences().isInPhantomMode());
}

} // namespace brimwick
