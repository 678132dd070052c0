#include "fakes/FakeKeyboardLayout.h"
#include "hotkeys/HotKeyText.h"
#include "hotkeys/KeyEvent.h"
#include "hotkeys/NSStringKeyCodeTranslator.h"
#include "hotkeys/Utf16.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace brimwick {

namespace {

using testing::ElementsAre;

constexpr std::uint16_t virtualA = 0;
constexpr std::uint16_t virtualH = 4;
constexpr std::uint16_t virtualLeft = 123;
constexpr std::uint16_t virtualGrave = 50;
constexpr std::uint32_t graveState = 7;

class KeyTranslationTest : public testing::Test {
  protected:
    KeyTranslationTest() {
        layout.put(virtualA, u"a");
        layout.put(virtualH, u"h");
        layout.put(virtualLeft, u"\uF702");
        layout.putDeadKey(virtualGrave, graveState);
        layout.put(KeyCode::space, u"`", 0, graveState);
    }
    std::optional<std::string> menuText(std::uint16_t keyCode, std::uint64_t modifierFlags = 0) {
        return NSStringKeyCodeTranslator::stringForKeyCodeWithModifierFlags(
            layout, keyCode, modifierFlags, [this](const std::string& line) { logged.push_back(line); });
    }

    FakeKeyboardLayout layout;
    std::vector<std::string> logged;
};

} // namespace

TEST_F(KeyTranslationTest, GivesTheMenuASmallLetterAndTheFieldACapitalOne) {
    EXPECT_EQ(menuText(virtualA), "a");
    EXPECT_EQ(stringWithKeyCode(layout, virtualA), "A");
    EXPECT_TRUE(logged.empty());
}

TEST_F(KeyTranslationTest, NamesAnArrowKeyInTheMenu) {
    EXPECT_EQ(menuText(virtualLeft), "Left");
}

TEST_F(KeyTranslationTest, GivesTheMenuNothingForADeadKeyAndTheFieldItsAccent) {
    EXPECT_EQ(menuText(virtualGrave), std::nullopt);
    EXPECT_THAT(logged, ElementsAre("Couldn't find a translation for the '50' key code"));
    EXPECT_EQ(stringWithKeyCode(layout, virtualGrave), "`");
}

TEST_F(KeyTranslationTest, WritesTheModifiersAheadOfTheKeyInTheirOrder) {
    EXPECT_EQ(hotKeyText(layout, virtualH, ModifierFlag::command | ModifierFlag::shift), "⌘⇧H");
    EXPECT_EQ(hotKeyText(layout, virtualH, ModifierFlag::control | ModifierFlag::option), "^⌥H");
    EXPECT_EQ(hotKeyText(layout, virtualH, ModifierFlag::any | 0x10109), "^⌘⌥⇧H");
    EXPECT_EQ(hotKeyText(layout, virtualH, 0), "H");
}

TEST_F(KeyTranslationTest, KnowsEverySpecialKeyByItsFirstEntry) {
    ASSERT_EQ(specialKeys.size(), 24U);
    for (const SpecialKey& key : specialKeys) {
        layout.put(99, std::u16string{key.character, u'x'});
        EXPECT_EQ(menuText(99), key.name) << static_cast<unsigned>(key.character);
    }
    layout.put(99, u"\x03");
    EXPECT_EQ(menuText(99), "Return");
    layout.put(99, u"\x0D");
    EXPECT_EQ(menuText(99), "Enter");
}

TEST_F(KeyTranslationTest, SaysThatThereIsNoLayout) {
    layout.available = false;
    EXPECT_EQ(menuText(virtualA), std::nullopt);
    EXPECT_THAT(logged, ElementsAre("Couldn't find a suitable keyboard layout from which to translate"));
    EXPECT_EQ(stringWithKeyCode(layout, virtualA), "");
    EXPECT_EQ(hotKeyText(layout, virtualA, ModifierFlag::command), "⌘");
}

TEST_F(KeyTranslationTest, SaysWhatErrorATranslationMet) {
    KeyTranslation& failed = layout.keys[{virtualA, 0, 0}];
    failed.status = -50;
    failed.errorName = "paramErr";
    failed.errorComment = "error in user parameter list";
    EXPECT_EQ(menuText(virtualA), std::nullopt);
    EXPECT_THAT(logged, ElementsAre("There was an paramErr error translating from the '-50' key code to a "
                                    "human readable string: error in user parameter list"));
    EXPECT_EQ(stringWithKeyCode(layout, virtualA), "");
}

TEST_F(KeyTranslationTest, PassesTheModifiersOnToTheLayout) {
    layout.put(virtualA, u"A", ModifierFlag::shift);
    EXPECT_EQ(menuText(virtualA, ModifierFlag::shift), "A");
}

TEST_F(KeyTranslationTest, ShowsNothingForAKeyThatTypesNothing) {
    EXPECT_EQ(stringWithKeyCode(layout, 99), "");
}

TEST(Utf16, BecomesUtf8WithWhateverIsNoCharacterReplaced) {
    EXPECT_EQ(utf8FromUtf16(u"aéй"), "aéй");
    EXPECT_EQ(utf8FromUtf16(u"\U0001F600"), "😀");
    EXPECT_EQ(utf8FromUtf16(std::u16string{0xD83D}), "\uFFFD");
    EXPECT_EQ(utf8FromUtf16(std::u16string{0xD83D, u'a'}), "\uFFFDa");
    EXPECT_EQ(utf8FromUtf16(std::u16string{0xDE00}), "\uFFFD");
}

TEST(Utf16, IsWrittenInCapitalLetters) {
    EXPECT_EQ(upperCased(u"éйß1"), u"ÉЙSS1");
    EXPECT_EQ(upperCased(u"\u0587"), u"\u0535\u0552");
    EXPECT_EQ(upperCased(u"\U00010428"), u"\U00010400");
}

} // namespace brimwick
