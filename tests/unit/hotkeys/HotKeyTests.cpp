#include "fakes/FakeHotKeyService.h"
#include "hotkeys/BWHotKeyCenter.h"
#include "hotkeys/HotKeyApplication.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace brimwick {

namespace {

constexpr std::uint64_t controlAndCommand = 1310985;
constexpr std::uint32_t controlCommandKeys = HotKeyModifier::control | HotKeyModifier::command;
const auto nothing = [](const HotKeyRelease&) {};

} // namespace

TEST(HotKeyCenter, RefusesACombinationThatIsRegisteredAlready) {
    FakeHotKeyService service;
    BWHotKeyCenter center(service);
    EXPECT_TRUE(center.registerHotKeyWithKeyCodeModifierFlagsTask(46, controlAndCommand, nothing));
    EXPECT_FALSE(center.registerHotKeyWithKeyCodeModifierFlagsTask(46, controlAndCommand, nothing));
    EXPECT_EQ(service.held->size(), 1U);
}

TEST(HotKeyCenter, GivesIdentifiersOnlyToHotKeysThatWereGranted) {
    FakeHotKeyService service;
    service.takenByOthers.insert({35, controlCommandKeys});
    BWHotKeyCenter center(service);
    center.registerHotKeyWithKeyCodeModifierFlagsTask(46, controlAndCommand, nothing);
    EXPECT_FALSE(center.registerHotKeyWithKeyCodeModifierFlagsTask(35, controlAndCommand, nothing));
    EXPECT_FALSE(center.hasRegisteredHotKeyWithKeyCodeModifierFlags(35, controlAndCommand));
    center.registerHotKeyWithKeyCodeModifierFlagsTask(31, controlAndCommand, nothing);
    EXPECT_EQ(service.held->front().identifier, 1U);
    EXPECT_EQ(service.held->back().identifier, 2U);
}

TEST(HotKeyCenter, HandsTheDesktopTheModifiersAndNothingElse) {
    EXPECT_EQ(hotKeyModifiers(0x1E0000 | 0x10000 | 0x109), HotKeyModifier::command | HotKeyModifier::shift |
                                                               HotKeyModifier::option |
                                                               HotKeyModifier::control);
    EXPECT_EQ(hotKeyModifiers(0x10000), 0U);
}

TEST(HotKeyCenter, LetsTheDesktopDecideAboutFlagsThatDifferInNoModifier) {
    FakeHotKeyService service;
    BWHotKeyCenter center(service);
    EXPECT_TRUE(center.registerHotKeyWithKeyCodeModifierFlagsTask(46, 0x140000, nothing));
    EXPECT_FALSE(center.hasRegisteredHotKeyWithKeyCodeModifierFlags(46, 0x150000));
    EXPECT_FALSE(center.registerHotKeyWithKeyCodeModifierFlagsTask(46, 0x150000, nothing));
}

TEST(HotKeyCenter, IgnoresANoticeThatBelongsToNoHotKey) {
    FakeHotKeyService service;
    BWHotKeyCenter center(service);
    int calls = 0;
    center.registerHotKeyWithKeyCodeModifierFlagsTask(46, controlAndCommand, [&](const auto&) { ++calls; });
    service.releaseUnknown(99);
    EXPECT_EQ(calls, 0);
    EXPECT_TRUE(service.pressAndRelease(46, controlCommandKeys));
    EXPECT_EQ(calls, 1);
}

TEST(HotKeyCenter, SilentlyIgnoresUnregisteringWhatIsNotRegistered) {
    FakeHotKeyService service;
    BWHotKeyCenter center(service);
    center.registerHotKeyWithKeyCodeModifierFlagsTask(46, controlAndCommand, nothing);
    center.unregisterHotKeyWithKeyCodeModifierFlags(46, 0);
    EXPECT_EQ(service.held->size(), 1U);
    center.unregisterHotKeyWithKeyCodeModifierFlags(46, controlAndCommand);
    EXPECT_TRUE(service.held->empty());
}

TEST(HotKeyCenter, LetsATaskRegisterAnotherHotKey) {
    FakeHotKeyService service;
    BWHotKeyCenter center(service);
    center.registerHotKeyWithKeyCodeModifierFlagsTask(46, controlAndCommand, [&](const auto&) {
        for (std::uint16_t key = 0; key < 20; ++key)
            center.registerHotKeyWithKeyCodeModifierFlagsTask(key, controlAndCommand, nothing);
    });
    EXPECT_TRUE(service.pressAndRelease(46, controlCommandKeys));
    EXPECT_EQ(service.held->size(), 21U);
}

class HotKeyApplicationTest : public testing::Test {
  protected:
    HotKeyApplicationTest() {
        preferences.setPreferences(PreferencesStore::defaultPreferencesDictionary());
        application.setInvocation([this](Mode mode) { invoked.push_back(mode); });
    }

    FakeHotKeyService service;
    BWHotKeyCenter center{service};
    std::vector<BWSelectedFileOrFolder> noFolders;
    PreferencesStore preferences{"/nonexistent", Resources(BRIMWICK_RESOURCES), noFolders};
    HotKeyApplication application{center, preferences};
    std::vector<Mode> invoked;
};

TEST_F(HotKeyApplicationTest, RegistersMoveThenCopyThenOpen) {
    application.applyAllHotKeys(false);
    std::vector<std::uint16_t> keyCodes;
    for (const auto& held : *service.held) keyCodes.push_back(held.keyCode);
    EXPECT_THAT(keyCodes, testing::ElementsAre(46, 35, 31));
}

TEST_F(HotKeyApplicationTest, InvokesTheModeOfTheHotKeyThatWasReleased) {
    application.applyAllHotKeys(false);
    service.pressAndRelease(31, controlCommandKeys);
    service.pressAndRelease(46, controlCommandKeys);
    service.pressAndRelease(35, controlCommandKeys);
    EXPECT_THAT(invoked, testing::ElementsAre(BWModeOpen, BWModeMove, BWModeCopy));
}

TEST_F(HotKeyApplicationTest, IsSilentAboutCombinationsThatAreRefusedAtStart) {
    preferences.preferences().set("CopyModeHotKeyCode", {std::string("46")});
    service.takenByOthers.insert({31, controlCommandKeys});
    application.applyAllHotKeys(false);
    EXPECT_EQ(service.held->size(), 1U);
}

TEST_F(HotKeyApplicationTest, TakesNoKeyWithoutModifiersAndNoCodeThatIsNoKey) {
    preferences.preferences().remove("HotKeyCode");
    preferences.preferences().remove("HotKeyModifierFlags");
    preferences.preferences().set("CopyModeHotKeyModifierFlags", {std::string("65536")});
    preferences.preferences().set("OpenModeHotKeyCode", {std::string("65567")});
    application.applyAllHotKeys(false);
    EXPECT_TRUE(service.held->empty());
}

TEST_F(HotKeyApplicationTest, ReplacesTheStoredHotKeyOfAMode) {
    application.applyAllHotKeys(false);
    EXPECT_TRUE(application.applyHotKeyPreferenceWithKeyCodeModifierFlagsUnregisterOldOneForMode(
        40, controlAndCommand, true, BWModeMove));
    EXPECT_FALSE(service.pressAndRelease(46, controlCommandKeys));
    EXPECT_TRUE(service.pressAndRelease(40, controlCommandKeys));
    EXPECT_THAT(invoked, testing::ElementsAre(BWModeMove));
}

TEST_F(HotKeyApplicationTest, LeavesAModeWithoutAHotKeyWhenTheNewOneIsRefused) {
    application.applyAllHotKeys(false);
    EXPECT_FALSE(application.applyHotKeyPreferenceWithKeyCodeModifierFlagsUnregisterOldOneForMode(
        35, controlAndCommand, true, BWModeMove));
    EXPECT_FALSE(service.pressAndRelease(46, controlCommandKeys));
}

} // namespace brimwick
