#include "fakes/FakeHotKeyService.h"
#include "hotkeys/HotKeyApplication.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <limits>

namespace brimwick {

namespace {

constexpr std::uint64_t controlAndCommand = 1310985;
constexpr std::uint32_t controlCommandKeys = HotKeyModifier::control | HotKeyModifier::command;

} // namespace

class HotKeyApplicationTest : public testing::Test {
  protected:
    HotKeyApplicationTest() {
        preferences.setPreferences(PreferencesStore::defaultPreferencesDictionary());
        application.setInvocation([this](Mode mode) { invoked.push_back(mode); });
    }

    FakeHotKeyService service;
    HotKeyRegistry registry{service};
    std::vector<BWSelectedFileOrFolder> noFolders;
    PreferencesStore preferences{"/nonexistent", Resources(BRIMWICK_RESOURCES), noFolders};
    HotKeyApplication application{registry, preferences};
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

TEST_F(HotKeyApplicationTest, AppliesTheStoredCombinationAgainAfterAnotherWasRefused) {
    application.applyAllHotKeys(false);
    service.takenByOthers.insert({4, controlCommandKeys});
    EXPECT_FALSE(application.applyHotKeyPreferenceWithKeyCodeModifierFlagsUnregisterOldOneForMode(
        4, controlAndCommand, true, BWModeMove));
    EXPECT_FALSE(service.pressAndRelease(46, controlCommandKeys));
    application.applyAllHotKeys(true);
    EXPECT_TRUE(service.pressAndRelease(46, controlCommandKeys));
    EXPECT_EQ(application.refusal(BWModeMove), "");
}

TEST_F(HotKeyApplicationTest, LeavesAModeOneHotKeyThoughTheLastOneCouldNotBeStored) {
    application.applyAllHotKeys(false);
    for (const std::uint16_t keyCode : {std::uint16_t{4}, std::uint16_t{5}})
        EXPECT_TRUE(application.applyHotKeyPreferenceWithKeyCodeModifierFlagsUnregisterOldOneForMode(
            keyCode, controlAndCommand, true, BWModeMove));
    EXPECT_FALSE(service.pressAndRelease(46, controlCommandKeys));
    EXPECT_FALSE(service.pressAndRelease(4, controlCommandKeys));
    EXPECT_TRUE(service.pressAndRelease(5, controlCommandKeys));
    EXPECT_EQ(service.held->size(), 3U);
}

TEST_F(HotKeyApplicationTest, LeavesTheOtherModesTheirHotKeysWhereTheStoredCodeIsNoKey) {
    // Its lower sixteen bits are those of Open.
    preferences.preferences().set("HotKeyCode", {std::string("65567")});
    application.applyAllHotKeys(false);
    EXPECT_TRUE(application.applyHotKeyPreferenceWithKeyCodeModifierFlagsUnregisterOldOneForMode(
        4, controlAndCommand, true, BWModeMove));
    EXPECT_TRUE(service.pressAndRelease(31, controlCommandKeys));
    EXPECT_TRUE(service.pressAndRelease(4, controlCommandKeys));
}

TEST_F(HotKeyApplicationTest, TakesNoCodeThatIsNoKeyWhateverKindOfValueItIs) {
    const std::array<PropertyListValue, 8> codes = {
        PropertyListValue{std::string("128")},
        PropertyListValue{std::string("65535")},
        PropertyListValue{std::string("-1")},
        PropertyListValue{std::string("99999999999999999999")},
        PropertyListValue{std::string("-99999999999999999999")},
        PropertyListValue{std::int64_t{1} << 40},
        PropertyListValue{std::int64_t{-1}},
        PropertyListValue{std::numeric_limits<double>::infinity()},
    };
    for (const PropertyListValue& code : codes) {
        preferences.preferences().set("HotKeyCode", code);
        application.applyAllHotKeys(true);
        EXPECT_FALSE(application.refusal(BWModeMove).empty());
        EXPECT_EQ(service.held->size(), 2U);
    }
}

TEST_F(HotKeyApplicationTest, HeedsNoStrayBitsOfStoredFlags) {
    preferences.preferences().set("HotKeyModifierFlags", {std::string("-1")});
    preferences.preferences().set("CopyModeHotKeyModifierFlags",
                                  {std::to_string(controlAndCommand | (std::uint64_t{1} << 62U))});
    application.applyAllHotKeys(false);
    EXPECT_TRUE(
        service.pressAndRelease(46, controlCommandKeys | HotKeyModifier::option | HotKeyModifier::shift));
    EXPECT_TRUE(service.pressAndRelease(35, controlCommandKeys));
    EXPECT_EQ(service.held->size(), 3U);
}

TEST_F(HotKeyApplicationTest, GivesOneCombinationToOneModeThoughTheStrayBitsDiffer) {
    preferences.preferences().set("CopyModeHotKeyCode", {std::string("46")});
    preferences.preferences().set("CopyModeHotKeyModifierFlags",
                                  {std::to_string(controlAndCommand | 0x10000U)});
    application.applyAllHotKeys(false);
    EXPECT_EQ(service.held->size(), 2U);
    EXPECT_NE(application.refusal(BWModeCopy), "");
    EXPECT_EQ(application.refusal(BWModeMove), "");
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

TEST_F(HotKeyApplicationTest, TellsWhyAModeHasNoHotKey) {
    preferences.preferences().set("CopyModeHotKeyCode", {std::string("46")});
    preferences.preferences().set("OpenModeHotKeyCode", {std::string("-3")});
    application.applyAllHotKeys(false);
    EXPECT_EQ(application.refusal(BWModeMove), "");
    EXPECT_EQ(application.refusal(BWModeCopy), "Brimwick already uses this hot key.");
    EXPECT_EQ(application.refusal(BWModeOpen), "The preferences hold no usable combination.");
}

TEST_F(HotKeyApplicationTest, PassesOnTheDesktopsReasonForARefusal) {
    service.takenByOthers.insert({31, controlCommandKeys});
    application.applyAllHotKeys(false);
    EXPECT_EQ(application.refusal(BWModeOpen), "taken by another program");
    EXPECT_TRUE(application.applyHotKeyPreferenceWithKeyCodeModifierFlagsUnregisterOldOneForMode(
        40, controlAndCommand, true, BWModeOpen));
    EXPECT_EQ(application.refusal(BWModeOpen), "");
}

TEST_F(HotKeyApplicationTest, KnowsThatAModeLostItsHotKeyToAnotherOfTheSameCombination) {
    preferences.preferences().set("CopyModeHotKeyCode", {std::string("46")});
    application.applyAllHotKeys(false);
    application.applyHotKeyPreferenceWithKeyCodeModifierFlagsUnregisterOldOneForMode(40, controlAndCommand,
                                                                                     true, BWModeCopy);
    EXPECT_EQ(application.refusal(BWModeMove), "Another mode has given its hot key up.");
}

TEST_F(HotKeyApplicationTest, CountsAnyOtherModeAsOpen) {
    EXPECT_TRUE(application.applyHotKeyPreferenceWithKeyCodeModifierFlagsUnregisterOldOneForMode(
        40, controlAndCommand, false, 7));
    service.pressAndRelease(40, controlCommandKeys);
    EXPECT_THAT(invoked, testing::ElementsAre(BWModeOpen));
}

} // namespace brimwick
