#include "hotkeys/HotKeyText.h"
#include "hotkeys/NSStringKeyCodeTranslator.h"
#include "platform/Waiting.h"
#include "platform/linux/x11/X11KeyboardLayout.h"
#include "platform/ports/ModifierFlags.h"
#include "platform/x11/TestKeyboard.h"

#include <gtest/gtest.h>

namespace brimwick {

namespace {

class X11KeyboardLayoutTest : public testing::Test {
  protected:
    X11KeyboardLayoutTest() {
        layout_.setChangedHandler([this] { ++changes_; });
    }
    ~X11KeyboardLayoutTest() override { TestKeyboard::run("setxkbmap", {"us"}); }

    void use(const QStringList& arguments) {
        changes_ = 0;
        ASSERT_TRUE(TestKeyboard::run("setxkbmap", arguments));
        ASSERT_TRUE(waitFor([this] { return changes_ > 0; }));
    }
    std::string field(std::uint16_t keyCode) { return stringWithKeyCode(layout_, keyCode); }
    std::string menu(std::uint16_t keyCode) {
        return NSStringKeyCodeTranslator::stringForKeyCodeWithModifierFlags(layout_, keyCode, 0,
                                                                            [](const std::string&) {})
            .value_or("nothing");
    }

    TestKeyboard keyboard_;
    X11KeyboardLayout layout_;
    int changes_ = 0;
};

// Keys by their place on an American keyboard.
constexpr std::uint16_t placeOfA = 0;
constexpr std::uint16_t placeOfS = 1;
constexpr std::uint16_t placeOfW = 13;
constexpr std::uint16_t placeOfY = 16;
constexpr std::uint16_t placeOfEquals = 24;
constexpr std::uint16_t placeOfBracket = 33;
constexpr std::uint16_t placeOfQuote = 39;
constexpr std::uint16_t placeOfGrave = 50;

} // namespace

TEST_F(X11KeyboardLayoutTest, GivesTheLettersOfTheLayout) {
    use({"us"});
    EXPECT_EQ(menu(placeOfA), "a");
    EXPECT_EQ(field(placeOfA), "A");
    EXPECT_EQ(field(placeOfGrave), "`");
    use({"de"});
    EXPECT_EQ(field(placeOfY), "Z");
    EXPECT_EQ(field(placeOfQuote), "Ä");
    use({"fr"});
    EXPECT_EQ(field(placeOfA), "Q");
    EXPECT_EQ(field(placeOfW), "Z");
    use({"ru"});
    EXPECT_EQ(field(placeOfA), "Ф");
    EXPECT_EQ(menu(placeOfA), "ф");
    use({"us", "-variant", "dvorak"});
    EXPECT_EQ(field(placeOfS), "O");
    use({"jp"});
    EXPECT_EQ(field(placeOfBracket), "@");
}

TEST_F(X11KeyboardLayoutTest, GivesADeadKeyItsAccentInTheFieldAndNothingInTheMenu) {
    use({"us", "-variant", "intl"});
    EXPECT_EQ(menu(placeOfGrave), "nothing");
    EXPECT_EQ(field(placeOfGrave), "`");
    EXPECT_EQ(field(placeOfQuote), "'");
    use({"de"});
    EXPECT_EQ(menu(placeOfEquals), "nothing");
    EXPECT_EQ(field(placeOfGrave), "^");
    EXPECT_EQ(field(placeOfA), "A");
}

TEST_F(X11KeyboardLayoutTest, ComposesALetterWithTheDeadKeyBeforeIt) {
    use({"us", "-variant", "intl"});
    const std::uint32_t dead = layout_.translate(placeOfQuote, 0, 0).deadKeyState;
    ASSERT_NE(dead, 0U);
    EXPECT_EQ(layout_.translate(placeOfA, 0, dead).text, u"á");
    EXPECT_EQ(layout_.translate(placeOfA, ModifierFlag::shift, dead).text, u"Á");
}

TEST_F(X11KeyboardLayoutTest, FollowsASwitchBetweenTwoLayouts) {
    use({"-layout", "us,ru", "-option", "grp:shifts_toggle"});
    EXPECT_EQ(field(placeOfA), "A");
    changes_ = 0;
    keyboard_.press(TestKey::shiftLeft);
    keyboard_.tap(62);
    keyboard_.release(TestKey::shiftLeft);
    ASSERT_TRUE(waitFor([this] { return changes_ > 0; }));
    EXPECT_EQ(field(placeOfA), "Ф");
    TestKeyboard::run("setxkbmap", {"-layout", "us", "-option", ""});
}

TEST_F(X11KeyboardLayoutTest, NamesTheKeysThatTypeNothingByTheirCharacters) {
    use({"us"});
    EXPECT_EQ(layout_.translate(123, 0, 0).text, u"\uF702");
    EXPECT_EQ(menu(123), "Left");
    EXPECT_EQ(menu(126), "Up");
    EXPECT_EQ(menu(115), "Home");
    EXPECT_EQ(menu(121), "Page Down");
    EXPECT_EQ(layout_.translate(96, 0, 0).text, u"\uF708") << "F5";
    EXPECT_EQ(layout_.translate(122, 0, 0).text, u"\uF704") << "F1";
    EXPECT_EQ(menu(36), "Enter");
    EXPECT_EQ(menu(76), "Return") << "that of the keypad";
    EXPECT_EQ(menu(48), "Tab");
    EXPECT_EQ(menu(49), "Space");
    EXPECT_EQ(menu(51), "Backspace");
    EXPECT_EQ(menu(117), "Delete");
    EXPECT_EQ(menu(53), "Escape");
}

TEST_F(X11KeyboardLayoutTest, GivesTheDigitsOfTheKeypad) {
    EXPECT_EQ(menu(83), "1");
}

TEST_F(X11KeyboardLayoutTest, KnowsNothingOfACodeThatIsNoKey) {
    EXPECT_EQ(layout_.translate(0xFFFF, 0, 0).text, u"");
    EXPECT_EQ(field(0xFFFF), "");
}

} // namespace brimwick
