#include "hotkeys/RegisteredHotKey.h"
#include "hotkeys/StoredHotKey.h"
#include "ui/support/ProgramTest.h"

#include <QKeyEvent>
#include <QWindow>

#include <algorithm>
#include <array>
#include <random>
#include <set>

namespace brimwick {

namespace {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr int presses = 20'000;
#else
constexpr int presses = 500'000;
#endif
constexpr int longestText = 200;

/// Keys of any place, name, text and modifiers, pressed and released in any order.
class AnyKeys {
  public:
    void send(QWindow* window) {
        const auto type =
            one(QEvent::KeyPress, QEvent::KeyPress, QEvent::KeyRelease, QEvent::ShortcutOverride);
        const int key = one(0, 1) == 0 ? one(Qt::Key_Escape, Qt::Key_Return, Qt::Key_Tab, Qt::Key_Shift,
                                             Qt::Key_A, Qt::Key_Z, Qt::Key_Comma, Qt::Key_unknown)
                                       : static_cast<int>(any());
        const quint32 scanCode = one(0, 1, 2) == 0 ? any() : any() % 160;
        const auto modifiers =
            Qt::KeyboardModifiers::fromInt(static_cast<int>(any() & 0x3e000000U) * one(0, 1, 1));
        QString text;
        for (unsigned length = any() % 3; length > 0; --length)
            text += QChar(one<ushort>('a', 'm', 'b', '\r', 0x3b1, 0x301, 0xd800, any() % 0x80));
        QKeyEvent event(type, key, modifiers, scanCode, any(), any(), text, any() % 2 == 0);
        QCoreApplication::sendEvent(window, &event);
    }
    bool happens(unsigned onceIn) { return any() % onceIn == 0; }

  private:
    unsigned any() { return static_cast<unsigned>(random_()); }
    template<typename First, typename... Rest>
    First one(First first, Rest... rest) {
        const std::array<First, 1 + sizeof...(rest)> values{first, static_cast<First>(rest)...};
        return values[any() % values.size()];
    }

    std::mt19937 random_{20};
};

} // namespace

class RandomKeys : public ProgramTest {
  protected:
    void SetUp() override {
        // No Q: with Command it would end the program from a field.
        for (const auto& [keyCode, letter] : {std::pair{0, u"a"}, {4, u"h"}, {13, u"w"}, {46, u"m"}})
            keyboardLayout.put(static_cast<std::uint16_t>(keyCode), letter);
        for (const char* name : {"root/amber", "root/wham", "root/hm"}) home.makeFolder(name);
        storePreferences({home / "root"});
        start();
    }
    /// Or does not work at all, and the program knows.
    bool worksAsStored(Mode mode) {
        if (!brimwick->model().hotKeys().refusal(mode).empty()) return true;
        const StoredHotKey stored = storedHotKey(brimwick->model().preferences(), mode);
        return std::ranges::any_of(*hotKeys.held, [&](const FakeHotKeyService::Held& held) {
            return held.keyCode == stored.keyCode && held.modifiers == hotKeyModifiers(stored.modifierFlags);
        });
    }
    void forgetWhatHappened() {
        fileManager.opened.clear();
        notifications.delivered.clear();
        sounds.played.clear();
    }
};

TEST_F(RandomKeys, DoThePickerNoHarm) {
    AnyKeys keys;
    int invocations = 0;
    for (int number = 0; number < presses; ++number) {
        if (!picker().isVisible() || keys.happens(5000)) {
            preferences().hidePreferences();
            showPicker(BWModeOpen);
            forgetWhatHappened();
            ++invocations;
        }
        keys.send(picker().wickWindow().windowHandle());
        if (controls().searchField->text().size() > longestText) controls().searchField->clear();
        const int rows = controls().searchResultsTableView->model()->rowCount();
        ASSERT_GE(controls().searchResultsTableView->selectedRow(), -1);
        ASSERT_LT(controls().searchResultsTableView->selectedRow(), std::max(rows, 1));
    }
    EXPECT_GT(invocations, presses / 5000);
    // It still does its work.
    showPicker(BWModeOpen);
    type("amb");
    EXPECT_EQ(resultNames(), std::vector<std::string>{"amber"});
}

TEST_F(RandomKeys, DoThePreferencesNoHarm) {
    AnyKeys keys;
    std::set<std::string> recorded;
    showPreferences();
    for (int number = 0; number < presses; ++number) {
        if (preferences().isInPhantomMode()) showPreferences();
        keys.send(preferences().preferencesWindow().windowHandle());
        ASSERT_GE(preferences().place().preferencesWindowFocusedControlIndex, 0);
        ASSERT_LE(preferences().place().preferencesWindowFocusedControlIndex, 4);
        ASSERT_LE(hotKeys.held->size(), 3U);
        if (!keys.happens(100)) continue;
        mainLoop.pass(std::chrono::milliseconds(500));
        recorded.insert(preferences().controls().hotKeyTextView->text().toStdString());
        for (const Mode mode : {BWModeMove, BWModeCopy, BWModeOpen}) ASSERT_TRUE(worksAsStored(mode));
    }
    EXPECT_GT(recorded.size(), 5U);
}

} // namespace brimwick
