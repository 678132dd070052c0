#include "fakes/FakeHotKeyService.h"
#include "fakes/FakeKeyboardLayout.h"
#include "fakes/FakeMainLoop.h"
#include "fakes/TemporaryFolder.h"
#include "hotkeys/HotKeyFields.h"
#include "hotkeys/KeyRules.h"
#include "hotkeys/RefusedKeys.h"
#include "hotkeys/Utf16.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

namespace brimwick {

namespace {

using std::chrono::milliseconds;
using testing::ElementsAre;

constexpr std::uint64_t command = ModifierFlag::command;
constexpr std::uint64_t shift = ModifierFlag::shift;
constexpr std::uint64_t controlAndCommand = 1310985;
constexpr std::uint32_t controlCommandKeys = HotKeyModifier::control | HotKeyModifier::command;
constexpr std::uint16_t virtualH = 4;
constexpr std::uint16_t virtualM = 46;
constexpr std::uint16_t virtualP = 35;

/// What a window would show.
class ShownFields : public HotKeyFieldsFace {
  public:
    class Label : public HotKeyErrorLabel {
      public:
        void showMessage(const std::string& message) override { text = message; }
        void setAlpha(double value) override { alpha = value; }
        void hideMessage() override { text.clear(); }
        std::string text;
        double alpha = 1;
    };

    void showHotKey(Mode mode, const std::string& text) override {
        texts.at(static_cast<std::size_t>(mode)) = text;
    }
    void showRefusal(Mode mode, const std::string& refusal) override {
        refusals.at(static_cast<std::size_t>(mode)) = refusal;
    }
    Label& errorLabel(Mode mode) override { return labels.at(static_cast<std::size_t>(mode)); }

    std::array<std::string, 3> texts;
    std::array<std::string, 3> refusals;
    std::array<Label, 3> labels;
};

class HotKeyFieldsTest : public testing::Test {
  protected:
    HotKeyFieldsTest() {
        layout.put(virtualH, u"h");
        layout.put(virtualM, u"m");
        layout.put(virtualP, u"p");
        layout.put(31, u"o");
        preferences.loadPreferences();
        hotKeys.applyAllHotKeys(false);
    }
    bool press(std::u16string characters, std::uint16_t keyCode, std::uint64_t flags) {
        KeyEvent event;
        event.keyCode = keyCode;
        event.modifierFlags = flags;
        event.charactersIgnoringModifiers = std::move(characters);
        return fields.recordKeyDown(event);
    }
    void focus(std::int32_t index) { place.preferencesWindowFocusedControlIndex = index; }
    const std::string& error(Mode mode) { return face.errorLabel(mode).text; }
    /// What another start of the program would read.
    std::int64_t stored(const char* key) {
        PreferencesStore store(folder.path(), Resources(BRIMWICK_RESOURCES), noFolders);
        store.loadPreferences();
        return store.integerPreferenceWithKey(key);
    }
    HotKeyFieldsSurroundings surroundings() {
        return {hotKeys,
                preferences,
                layout,
                mainLoop,
                place,
                face,
                [this] { ++terminations; },
                [this] { ++menuUpdates; }};
    }

    TemporaryFolder folder;
    std::vector<BWSelectedFileOrFolder> noFolders;
    PreferencesStore preferences{folder.path(), Resources(BRIMWICK_RESOURCES), noFolders};
    FakeHotKeyService service;
    FakeKeyboardLayout layout;
    FakeMainLoop mainLoop;
    HotKeyRegistry registry{service};
    HotKeyApplication hotKeys{registry, preferences};
    PreferencesPlace place;
    ShownFields face;
    int terminations = 0;
    int menuUpdates = 0;
    HotKeyFields fields{surroundings()};
};

} // namespace

TEST_F(HotKeyFieldsTest, RefusesCommandShiftAAndRecordsCommandShiftH) {
    EXPECT_TRUE(press(u"A", 0, command | shift));
    EXPECT_EQ(error(BWModeMove), "Not allowed");
    EXPECT_EQ(stored("HotKeyCode"), virtualM);

    const std::uint64_t full = command | shift | 0x10A;
    EXPECT_TRUE(press(u"H", virtualH, full));
    EXPECT_EQ(face.texts[BWModeMove], "⌘⇧H");
    EXPECT_EQ(stored("HotKeyCode"), virtualH);
    EXPECT_EQ(stored("HotKeyModifierFlags"), static_cast<std::int64_t>(full));
    EXPECT_TRUE(service.pressAndRelease(virtualH, HotKeyModifier::command | HotKeyModifier::shift));
    EXPECT_FALSE(service.pressAndRelease(virtualM, controlCommandKeys));
    EXPECT_EQ(menuUpdates, 1);
}

TEST_F(HotKeyFieldsTest, AcceptsShiftAloneAndRefusesALetterAlone) {
    EXPECT_TRUE(press(u"h", virtualH, 0));
    EXPECT_EQ(error(BWModeMove), "Needs ⇧, ^, ⌥ and/or ⌘");
    EXPECT_EQ(stored("HotKeyCode"), virtualM);
    EXPECT_TRUE(press(u"H", virtualH, shift));
    EXPECT_EQ(face.texts[BWModeMove], "⇧H");
    EXPECT_EQ(stored("HotKeyCode"), virtualH);
}

TEST_F(HotKeyFieldsTest, DoesNotTakeCapsLockForAModifier) {
    EXPECT_TRUE(press(u"h", virtualH, 0x10100));
    EXPECT_EQ(error(BWModeMove), "Needs ⇧, ^, ⌥ and/or ⌘");
}

TEST_F(HotKeyFieldsTest, EndsTheProgramByCommandQ) {
    EXPECT_TRUE(press(u"q", 12, command));
    EXPECT_EQ(terminations, 1);
    EXPECT_EQ(error(BWModeMove), "Not allowed") << "where it does not end, the key is still none";
    press(u"q", 12, ModifierFlag::control);
    EXPECT_EQ(terminations, 1);
}

TEST_F(HotKeyFieldsTest, RefusesFunctionKeysWithAndWithoutModifiers) {
    for (const std::uint64_t flags : {std::uint64_t{0}, command, ModifierFlag::any}) {
        face.errorLabel(BWModeMove).text.clear();
        EXPECT_TRUE(press(u"\uF708", 96, flags));
        EXPECT_EQ(error(BWModeMove), "Not allowed") << flags;
    }
}

TEST_F(HotKeyFieldsTest, RecordsForTheFieldThatHasTheFocus) {
    focus(1);
    press(u"H", virtualH, shift);
    EXPECT_EQ(stored("CopyModeHotKeyCode"), virtualH);
    EXPECT_EQ(face.texts[BWModeCopy], "⇧H");
    focus(2);
    press(u"h", virtualH, command);
    EXPECT_EQ(stored("OpenModeHotKeyCode"), virtualH);
    EXPECT_EQ(stored("OpenModeHotKeyModifierFlags"), static_cast<std::int64_t>(command));
    EXPECT_EQ(stored("HotKeyCode"), virtualM);
}

TEST_F(HotKeyFieldsTest, PassesAKeyOnThatIsNotMeantForAField) {
    for (const std::int32_t index : {3, 4}) {
        focus(index);
        EXPECT_FALSE(press(u"H", virtualH, shift));
    }
    focus(0);
    place.selectedTab = PreferencesTab::Notifications;
    EXPECT_FALSE(press(u"H", virtualH, shift));
    place.selectedTab = PreferencesTab::General;
    EXPECT_FALSE(press(u"", virtualH, shift)) << "it types nothing";
    EXPECT_EQ(stored("HotKeyCode"), virtualM);
    EXPECT_EQ(error(BWModeMove), "");
}

TEST_F(HotKeyFieldsTest, LeavesTheModeWithoutAHotKeyWhenTheNewOneIsRefused) {
    service.takenByOthers.insert({virtualH, HotKeyModifier::command});
    EXPECT_TRUE(press(u"h", virtualH, command));
    EXPECT_EQ(error(BWModeMove), "Can't register");
    EXPECT_FALSE(service.pressAndRelease(virtualM, controlCommandKeys));
    EXPECT_EQ(stored("HotKeyCode"), virtualM);
    EXPECT_EQ(stored("HotKeyModifierFlags"), static_cast<std::int64_t>(controlAndCommand));
    EXPECT_EQ(face.refusals[BWModeMove], "taken by another program");
    EXPECT_EQ(face.refusals[BWModeCopy], "");

    service.takenByOthers.clear();
    EXPECT_TRUE(press(u"h", virtualH, command));
    EXPECT_EQ(face.refusals[BWModeMove], "");
    EXPECT_EQ(stored("HotKeyCode"), virtualH);
}

TEST_F(HotKeyFieldsTest, ShowsTheMessageBelowTheFieldThatHasTheFocus) {
    focus(2);
    fields.showHotKeyErrorMessage("Duplicate shortcut");
    EXPECT_EQ(error(BWModeOpen), "Duplicate shortcut");
    EXPECT_EQ(error(BWModeMove), "");
    focus(4);
    fields.showHotKeyErrorMessage("any other place means Open");
    EXPECT_EQ(error(BWModeOpen), "any other place means Open");
}

TEST_F(HotKeyFieldsTest, FadesTheMessagesOfTheModesEachByItself) {
    fields.showHotKeyErrorMessage("first");
    mainLoop.pass(milliseconds(2000));
    focus(1);
    fields.showHotKeyErrorMessage("second");
    mainLoop.pass(milliseconds(3050));
    EXPECT_EQ(error(BWModeMove), "");
    EXPECT_EQ(error(BWModeCopy), "second");
    mainLoop.pass(milliseconds(2000));
    EXPECT_EQ(error(BWModeCopy), "");
}

TEST_F(HotKeyFieldsTest, ShowsTheStoredHotKeysAndEndsAtTheFieldOfMove) {
    focus(4);
    fields.populate();
    EXPECT_THAT(face.texts, ElementsAre("^⌘M", "^⌘P", "^⌘O"));
    EXPECT_EQ(place.preferencesWindowFocusedControlIndex, 0);
}

TEST_F(HotKeyFieldsTest, FollowsAChangeOfTheLayoutWhereverTheFocusIs) {
    fields.populate();
    focus(2);
    layout.put(virtualM, u"ь");
    fields.refresh();
    EXPECT_EQ(face.texts[BWModeMove], "^⌘Ь");
    EXPECT_EQ(place.preferencesWindowFocusedControlIndex, 2);
}

TEST_F(HotKeyFieldsTest, SayWhichHotKeysAreNotActive) {
    FakeHotKeyService ofAnotherStart;
    ofAnotherStart.takenByOthers.insert({31, controlCommandKeys});
    preferences.preferences().set("CopyModeHotKeyCode", {std::string("46")});
    HotKeyRegistry another(ofAnotherStart);
    HotKeyApplication application(another, preferences);
    application.applyAllHotKeys(false);
    HotKeyFields({application, preferences, layout, mainLoop, place, face, [] {}, [] {}}).populate();
    EXPECT_THAT(face.refusals,
                ElementsAre("", "Brimwick already uses this hot key.", "taken by another program"));
}

TEST_F(HotKeyFieldsTest, SurviveAMillionKeysOfAnyKind) {
    std::mt19937 random(20);
    const auto one = [&](auto... of) {
        const std::array values{of...};
        return values[random() % values.size()];
    };
    std::size_t recorded = 0;
    for (int round = 0; round < 1'000'000; ++round) {
        KeyEvent event;
        event.keyCode =
            static_cast<std::uint16_t>(one(0U, 127U, 0xFFFFU) == 127U ? random() % 128 : random());
        event.modifierFlags = std::uint64_t{random()} << one(0U, 8U, 32U);
        event.isARepeat = random() % 2 == 0;
        event.windowShortcut = static_cast<std::uint16_t>(one(0xFFFFU, 13U, 0U));
        for (std::size_t length = random() % 4; length > 0; --length)
            event.charactersIgnoringModifiers += static_cast<char16_t>(random());
        place.selectedTab = static_cast<PreferencesTab>(random() % 2);
        place.preferencesWindowFocusedControlIndex = static_cast<std::int32_t>(random() % 16) - 1;
        // To store each would wear the disk: one in fifty of those that would be is.
        preferencesKey(event, place);
        pickerKey(event, random() % 2 == 0);
        pickerSwallowsKeyUp(event);
        if (!fields.wouldRecordKeyDown(event)) {
            EXPECT_FALSE(fields.recordKeyDown(event));
            continue;
        }
        const bool wouldBeStored =
            event.has(ModifierFlag::any) &&
            !isRefusedForHotKeys(upperCased(event.charactersIgnoringModifiers).front());
        if (wouldBeStored && random() % 50 != 0) continue;
        EXPECT_TRUE(fields.recordKeyDown(event));
        ++recorded;
        mainLoop.pass(milliseconds(random() % 20));
    }
    EXPECT_GT(recorded, 10'000U);
    EXPECT_LE(service.held->size(), 3U);
    EXPECT_LE(mainLoop.timerCount(), 3U);
}

} // namespace brimwick
