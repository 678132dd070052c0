#include "preferences/NotificationSettings.h"
#include "ui/support/PreferencesTest.h"

#include <QFileDialog>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>

#include <gmock/gmock.h>
#include <sys/inotify.h>
#include <unistd.h>

namespace brimwick {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::int32_t styleIndex = 12;
constexpr std::int32_t closeIndex = 13;

/// Counts how often a file of a folder was replaced.
class Replacements {
  public:
    explicit Replacements(const std::string& folder) : events_(inotify_init1(IN_NONBLOCK)) {
        EXPECT_GE(inotify_add_watch(events_, folder.c_str(), IN_MOVED_TO), 0);
    }
    Replacements(const Replacements&) = delete;
    Replacements& operator=(const Replacements&) = delete;
    ~Replacements() { close(events_); }

    int ofFile(const std::string& name) {
        alignas(inotify_event) std::array<char, 4096> buffer{};
        int count = 0;
        for (ssize_t size = 0; (size = read(events_, buffer.data(), buffer.size())) > 0;)
            for (ssize_t at = 0; at < size;) {
                const auto* event = reinterpret_cast<const inotify_event*>(buffer.data() + at);
                count += name == event->name ? 1 : 0;
                at += static_cast<ssize_t>(sizeof(inotify_event)) + event->len;
            }
        return count;
    }

  private:
    int events_;
};

} // namespace

/// The notifications tab in the preferences window of the whole program.
class NotificationSettingsTab : public PreferencesTest {
  protected:
    void startWith(const std::vector<std::pair<std::string, PropertyListValue>>& settings = {}) {
        storePreferences({home.makeFolder("root")}, settings);
        start();
        showPreferences();
        shown().preferencesWindowTabView->setCurrentIndex(1);
    }
    NotificationsTab& page() { return *shown().notificationsTab; }
    PropertyListDictionary& inMemory() { return brimwick->model().preferences().preferences(); }
    std::vector<bool> states() {
        std::vector<bool> checked;
        for (const auto& [control, key] : page().checkBoxes()) checked.push_back(control->isChecked());
        return checked;
    }
    std::vector<bool> saved() {
        const PropertyListDictionary stored = storedPreferences();
        std::vector<bool> values;
        for (const auto& [control, key] : page().checkBoxes()) {
            const PropertyListValue* value = stored.find(key);
            values.push_back(value != nullptr && *value == PropertyListValue{true});
        }
        return values;
    }
    void goTo(std::int32_t index) {
        while (focusedIndex() != index) tab();
    }
    /// In the order of the keys, not in that of the rows.
    std::vector<BWButton*> boxesByTab() {
        return {page().notificationSoundOnMoveCheckBox,
                page().notificationSoundOnCopyCheckBox,
                page().notificationSoundOnOpenCheckBox,
                page().notificationAnimateOnInitializeIndexCheckBox,
                page().notificationSoundOnInitializeIndexCheckBox,
                page().notificationPopupOnInitializeIndexCheckBox,
                page().notificationAnimateOnRebuildIndexForPreferenceCheckBox,
                page().notificationSoundOnRebuildIndexForPreferenceCheckBox,
                page().notificationPopupOnRebuildIndexForPreferenceCheckBox,
                page().notificationAnimateOnRebuildIndexForSubfolderCheckBox,
                page().notificationSoundOnRebuildIndexForSubfolderCheckBox,
                page().notificationPopupOnRebuildIndexForSubfolderCheckBox};
    }
};

TEST_F(NotificationSettingsTab, ShowsWhatIsStored) {
    startWith();
    EXPECT_THAT(states(),
                ElementsAre(true, true, true, true, true, false, true, true, true, true, true, false));
    EXPECT_TRUE(page().notificationAnimationStylePulseButtonCell->isChecked());
}

TEST_F(NotificationSettingsTab, ShowsAKeyThatIsMissingAsUnchecked) {
    startWith();
    inMemory().remove("NotificationSoundOnCopy");
    inMemory().set("NotificationPopupOnInitializeIndex", {"text"});
    preferences().hidePreferences();
    showPreferences();
    EXPECT_THAT(states(),
                ElementsAre(true, false, true, true, true, false, true, true, true, false, true, false));
}

TEST_F(NotificationSettingsTab, WritesAllKeysAndTheStyleAtAClickOnOneBoxAndSavesOnce) {
    startWith();
    for (const auto& [control, key] : page().checkBoxes()) inMemory().remove(key);
    inMemory().remove("NotificationAnimationStyle");
    Replacements replacements(supportFolder());
    page().notificationSoundOnOpenCheckBox->click();
    EXPECT_EQ(replacements.ofFile("BrimwickPreferences.plist"), 1);
    EXPECT_THAT(saved(),
                ElementsAre(true, true, false, true, true, false, true, true, true, true, true, false));
    const PropertyListDictionary stored = storedPreferences();
    for (const auto& [control, key] : page().checkBoxes()) EXPECT_NE(stored.find(key), nullptr) << key;
    ASSERT_NE(stored.find("NotificationAnimationStyle"), nullptr);
    EXPECT_EQ(*stored.find("NotificationAnimationStyle"), PropertyListValue{std::int64_t{0}});
}

TEST_F(NotificationSettingsTab, SavesEachBoxAtOnceByMouseAndBySpace) {
    startWith();
    std::int32_t index = 0;
    for (BWButton* const box : boxesByTab()) {
        const bool before = box->isChecked();
        box->click();
        EXPECT_EQ(focusedIndex(), index) << "the keyboard follows the mouse";
        EXPECT_TRUE(box->hasFocus());
        EXPECT_EQ(box->isChecked(), !before);
        EXPECT_EQ(saved(), states());
        press(scanSpace, Qt::Key_Space);
        EXPECT_EQ(box->isChecked(), before);
        EXPECT_EQ(saved(), states());
        EXPECT_EQ(focusedIndex(), index++);
    }
}

TEST_F(NotificationSettingsTab, FlipsABoxOnceHoweverLongSpaceIsHeld) {
    startWith();
    send(QEvent::KeyPress, scanSpace, Qt::Key_Space, Qt::NoModifier);
    for (int times = 0; times < 3; ++times) {
        QKeyEvent again(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier, scanSpace, 0, 0, " ", true);
        QCoreApplication::sendEvent(window().windowHandle(), &again);
    }
    EXPECT_FALSE(page().notificationSoundOnMoveCheckBox->isChecked());
    send(QEvent::KeyRelease, scanSpace, Qt::Key_Space, Qt::NoModifier);
    EXPECT_FALSE(page().notificationSoundOnMoveCheckBox->isChecked());
    EXPECT_FALSE(saved().front());
}

TEST_F(NotificationSettingsTab, GoesRoundByTabBothWaysAndShowsWhereTheFocusIs) {
    startWith();
    const std::vector<BWButton*> boxes = boxesByTab();
    for (const bool back : {false, true})
        for (std::int32_t step = 0; step < 15; ++step) {
            const std::int32_t index = (back ? 14 * 2 - step + 1 : step) % 14;
            ASSERT_EQ(focusedIndex(), index);
            EXPECT_EQ(page().notificationAnimationStyleFocusRing->ringIsHidden(), index != styleIndex);
            EXPECT_EQ(shown().preferencesWindowCloseButton->isDefault(), index == closeIndex);
            for (std::size_t box = 0; box < boxes.size() && index != styleIndex; ++box)
                EXPECT_EQ(boxes[box]->hasFocus(), static_cast<std::int32_t>(box) == index) << index;
            tab(back);
        }
}

TEST_F(NotificationSettingsTab, LeavesTheKeyboardWithTheBoxBeforeWhenTheStyleIsShownAsFocused) {
    startWith();
    goTo(styleIndex);
    EXPECT_TRUE(page().notificationPopupOnRebuildIndexForSubfolderCheckBox->hasFocus());
    EXPECT_TRUE(page().notificationPopupOnRebuildIndexForSubfolderCheckBox->focusMarkIsHidden())
        << "one mark is enough";
    press(scanSpace, Qt::Key_Space);
    EXPECT_TRUE(page().notificationAnimationStyleRotateButtonCell->isChecked());
    EXPECT_FALSE(page().notificationPopupOnRebuildIndexForSubfolderCheckBox->isChecked());
    EXPECT_EQ(brimwick->model().preferences().animationStyle(), 1);
    EXPECT_EQ(*storedPreferences().find("NotificationAnimationStyle"), PropertyListValue{std::int64_t{0}})
        << "it is saved with the next change";
    goTo(0);
    press(scanSpace, Qt::Key_Space);
    EXPECT_EQ(*storedPreferences().find("NotificationAnimationStyle"), PropertyListValue{std::int64_t{1}});
}

TEST_F(NotificationSettingsTab, SavesTheStyleThatIsClicked) {
    startWith();
    for (const bool rotate : {true, false}) {
        (rotate ? page().notificationAnimationStyleRotateButtonCell
                : page().notificationAnimationStylePulseButtonCell)
            ->click();
        EXPECT_EQ(*storedPreferences().find("NotificationAnimationStyle"),
                  PropertyListValue{std::int64_t{rotate ? 1 : 0}});
        EXPECT_EQ(focusedIndex(), styleIndex);
        EXPECT_FALSE(page().notificationAnimationStyleFocusRing->ringIsHidden());
    }
}

TEST_F(NotificationSettingsTab, IsClosedFromItsButtonByReturnAndBySpaceAndFromAnywhereByEscape) {
    startWith();
    const std::vector<std::pair<quint32, int>> keys{{scanReturn, Qt::Key_Return}, {scanSpace, Qt::Key_Space}};
    for (const auto& [scanCode, key] : keys) {
        press(scanReturn, Qt::Key_Return);
        EXPECT_FALSE(preferences().isInPhantomMode());
        tab(true);
        press(scanCode, key);
        EXPECT_TRUE(preferences().isInPhantomMode());
        showPreferences();
        EXPECT_EQ(shown().preferencesWindowTabView->currentIndex(), 1) << "the tab stays";
        EXPECT_EQ(focusedIndex(), 0) << "the focus does not";
        EXPECT_TRUE(page().notificationSoundOnMoveCheckBox->hasFocus());
    }
    goTo(5);
    press(scanEscape, Qt::Key_Escape);
    EXPECT_TRUE(preferences().isInPhantomMode());
}

TEST_F(NotificationSettingsTab, BeginsAtItsFirstControlAndSoDoesTheOther) {
    startWith();
    goTo(3);
    shown().preferencesWindowTabView->setCurrentIndex(0);
    EXPECT_EQ(focusedIndex(), 0);
    EXPECT_TRUE(shown().hotKeyTextView->hasFocus());
    EXPECT_FALSE(shown().hotKeyTextView->ringIsHidden());
    tab();
    shown().preferencesWindowTabView->setCurrentIndex(1);
    EXPECT_EQ(focusedIndex(), 0);
    EXPECT_TRUE(page().notificationSoundOnMoveCheckBox->hasFocus());
    EXPECT_EQ(preferences().place().selectedTab, PreferencesTab::Notifications);
}

TEST_F(NotificationSettingsTab, TakesFoldersOffTheListByMinusLikeTheOther) {
    startWith();
    shown().indexedFoldersTableView->selectRow(0);
    press(scanMinus, Qt::Key_Minus);
    EXPECT_THAT(brimwick->model().folderIndexer().indexedFolders(), IsEmpty());
    EXPECT_EQ(focusedIndex(), 2);
    EXPECT_TRUE(page().notificationSoundOnOpenCheckBox->hasFocus()) << "what Space acts on is marked";
    press(scanSpace, Qt::Key_Space);
    EXPECT_FALSE(page().notificationSoundOnOpenCheckBox->isChecked());
    press(scanEquals, Qt::Key_Equal);
    EXPECT_NE(window().findChild<QFileDialog*>(), nullptr);
}

/// The same without the rest of the program.
class ExampleOfTheAnimation : public testing::Test {
  protected:
    TemporaryFolder home;
    FakeWindowSystem windowSystem;
    std::vector<BWSelectedFileOrFolder> indexedFolders;
    PreferencesStore store{home.path(), Resources(BRIMWICK_RESOURCES), indexedFolders};
    BWPreferencesWindow window{windowSystem};
    PreferencesControls controls{window};
    PreferencesPlace place{PreferencesTab::Notifications};
    PreferencesFocus focus{controls, place};
    std::vector<std::int64_t> animated;
    NotificationSettings settings{{store, [this](std::int64_t style) { animated.push_back(style); }},
                                  *controls.notificationsTab,
                                  focus};
};

TEST_F(ExampleOfTheAnimation, RotatesForAnyStyleButPulseAndTheNextChangeStoresIt) {
    store.preferences().set("NotificationAnimationStyle", {std::int64_t{5}});
    settings.populate();
    EXPECT_TRUE(controls.notificationsTab->notificationAnimationStyleRotateButtonCell->isChecked());
    EXPECT_THAT(animated, ElementsAre(5));
    controls.notificationsTab->notificationSoundOnMoveCheckBox->click();
    EXPECT_EQ(store.animationStyle(), 1);
    EXPECT_THAT(animated, ElementsAre(5, 1));
}

TEST_F(ExampleOfTheAnimation, StartsAnewWithEveryChange) {
    settings.populate();
    controls.notificationsTab->notificationAnimationStyleRotateButtonCell->click();
    settings.toggleAnimationStyle();
    settings.toggleCheckBox(3);
    EXPECT_THAT(animated, ElementsAre(0, 1, 0, 0));
    EXPECT_TRUE(controls.notificationsTab->notificationAnimateOnInitializeIndexCheckBox->isChecked());
}

TEST_F(ExampleOfTheAnimation, IsLeftAloneByPlacesWithoutACheckBox) {
    for (const std::int32_t place : {12, 13, 14, -1}) settings.toggleCheckBox(place);
    EXPECT_THAT(animated, IsEmpty());
}

} // namespace brimwick
