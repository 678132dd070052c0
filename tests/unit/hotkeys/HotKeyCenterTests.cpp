#include "fakes/FakeHotKeyService.h"
#include "hotkeys/BWHotKeyCenter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

namespace brimwick {

namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::SizeIs;

constexpr std::uint64_t controlAndCommand = 1310985;
constexpr std::uint64_t capsLock = 0x10000;
constexpr std::uint32_t controlCommandKeys = HotKeyModifier::control | HotKeyModifier::command;
const auto nothing = [](const KeyEvent&) {};

/// Knows one action.
class Receiver : public HotKeyTarget {
  public:
    bool perform(const std::string& action, const KeyEvent& event, const std::string& object) override {
        if (action != "wave:object:") return false;
        events.push_back(event);
        objects.push_back(object);
        return true;
    }
    std::string description() const override { return "Receiver"; }

    std::vector<KeyEvent> events;
    std::vector<std::string> objects;
};

class HotKeyCenter : public testing::Test {
  protected:
    bool registerTask(std::uint16_t keyCode, std::uint64_t flags, HotKeyTask task = nothing) {
        return center.registerHotKeyWithKeyCodeModifierFlagsTask(keyCode, flags, std::move(task));
    }
    bool registerAction(std::uint16_t keyCode, const std::string& action = "wave:object:") {
        return center.registerHotKeyWithKeyCodeModifierFlagsTargetActionObject(keyCode, controlAndCommand,
                                                                               receiver, action, "hello");
    }
    std::uint32_t identifierOfLast() { return service.held->back().identifier; }

    FakeHotKeyService service;
    HotKeyRegistry registry{service};
    BWHotKeyCenter center{registry};
    std::shared_ptr<Receiver> receiver = std::make_shared<Receiver>();
};

} // namespace

TEST_F(HotKeyCenter, RefusesACombinationThatIsRegisteredAlready) {
    EXPECT_TRUE(registerTask(46, controlAndCommand));
    EXPECT_FALSE(registerTask(46, controlAndCommand));
    EXPECT_EQ(center.refusal(), "Brimwick already uses this hot key.");
    EXPECT_THAT(*service.held, SizeIs(1));
    EXPECT_THAT(center.registeredHotKeys(), SizeIs(1));
}

TEST_F(HotKeyCenter, SharesItsHotKeysWithEveryOtherCentre) {
    registerTask(46, controlAndCommand);
    BWHotKeyCenter other(registry);
    EXPECT_TRUE(other.hasRegisteredHotKeyWithKeyCodeModifierFlags(46, controlAndCommand));
    EXPECT_FALSE(other.registerHotKeyWithKeyCodeModifierFlagsTask(46, controlAndCommand, nothing));
    other.unregisterHotKeyWithKeyCodeModifierFlags(46, controlAndCommand);
    EXPECT_TRUE(center.registeredHotKeys().empty());
}

TEST_F(HotKeyCenter, CountsIdentifiersByTheHotKeysThatWereGranted) {
    service.takenByOthers.insert({35, controlCommandKeys});
    registerTask(46, controlAndCommand);
    EXPECT_EQ(identifierOfLast(), 1U);
    EXPECT_FALSE(registerTask(35, controlAndCommand));
    EXPECT_EQ(center.refusal(), "taken by another program");
    registerTask(31, controlAndCommand);
    EXPECT_EQ(identifierOfLast(), 2U);
    EXPECT_EQ(center.refusal(), "");
}

TEST_F(HotKeyCenter, NeverGivesAnIdentifierTwice) {
    registerTask(46, controlAndCommand);
    center.unregisterHotKeyWithKeyCodeModifierFlags(46, controlAndCommand);
    registerTask(46, controlAndCommand);
    EXPECT_EQ(identifierOfLast(), 2U);
}

TEST_F(HotKeyCenter, HandsTheDesktopTheModifiersAndNothingElse) {
    EXPECT_EQ(hotKeyModifiers(ModifierFlag::any | capsLock | 0x109),
              HotKeyModifier::command | HotKeyModifier::shift | HotKeyModifier::option |
                  HotKeyModifier::control);
    EXPECT_EQ(hotKeyModifiers(capsLock), 0U);
}

TEST_F(HotKeyCenter, LetsTheDesktopDecideAboutFlagsThatDifferInNoModifier) {
    EXPECT_TRUE(registerTask(46, 0x140000));
    EXPECT_FALSE(center.hasRegisteredHotKeyWithKeyCodeModifierFlags(46, 0x140000 | capsLock));
    EXPECT_FALSE(registerTask(46, 0x140000 | capsLock));
    EXPECT_EQ(center.refusal(), "one of ours") << "it was asked, and refused";
}

TEST_F(HotKeyCenter, KeepsTwoHotKeysThatDifferInNoModifierWhereTheDesktopGrantsBoth) {
    class GenerousService : public FakeHotKeyService {
      public:
        HotKeyGrant grab(std::uint16_t, std::uint32_t, std::uint32_t) override {
            return {std::make_unique<HotKeyGrab>(), {}};
        }
    } generous;
    HotKeyRegistry ofGenerous(generous);
    BWHotKeyCenter here(ofGenerous);
    EXPECT_TRUE(here.registerHotKeyWithKeyCodeModifierFlagsTask(46, 0x140000, nothing));
    EXPECT_TRUE(here.registerHotKeyWithKeyCodeModifierFlagsTask(46, 0x140000 | capsLock, nothing));
    EXPECT_FALSE(here.registerHotKeyWithKeyCodeModifierFlagsTask(46, 0x140000, nothing));
    EXPECT_THAT(here.registeredHotKeys(), SizeIs(2));
    EXPECT_TRUE(here.hasRegisteredHotKeyWithKeyCodeModifierFlags(46, 0x140000 | capsLock));
}

TEST_F(HotKeyCenter, HasNoHotKeyAtFirst) {
    EXPECT_TRUE(center.registeredHotKeys().empty());
}

TEST_F(HotKeyCenter, DescribesWhatAHotKeyInvokes) {
    registerTask(46, controlAndCommand);
    EXPECT_THAT(
        center.registeredHotKeys().front()->description(),
        EndsWith(">\n\t(key: 46\n\tflags: (NSControlKeyMask | NSCommandKeyMask)\n\tinvokes: (block))"));
    center.unregisterHotKeyWithKeyCodeModifierFlags(46, controlAndCommand);
    registerAction(31);
    EXPECT_THAT(center.registeredHotKeys().front()->description(),
                EndsWith("\tinvokes: [Receiver wave:object:])"));
}

TEST_F(HotKeyCenter, DescribesAHotKeyByItsPublicName) {
    registerTask(46, controlAndCommand);
    EXPECT_THAT(center.registeredHotKeys().front()->description(), testing::StartsWith("<BWHotKey: 0x"));
}

TEST_F(HotKeyCenter, DescribesTheFlagsInTheirOrderAndSaysWhenThereAreNone) {
    const RegisteredHotKey all(1, ModifierFlag::any, {});
    EXPECT_THAT(all.description(),
                HasSubstr("(NSControlKeyMask | NSCommandKeyMask | NSShiftKeyMask | NSAlternateKeyMask)"));
    const RegisteredHotKey none(1, 0, {});
    EXPECT_THAT(none.description(), HasSubstr("flags: ERROR: No valid flags\n"));
}

TEST_F(HotKeyCenter, SendsTheTargetItsActionWithTheKeyUpAndTheObject) {
    registerAction(46);
    service.pressAndRelease(46, controlCommandKeys,
                            {.modifierFlags = 0x40000, .timestamp = 77, .x = 3, .y = 4});
    ASSERT_THAT(receiver->events, SizeIs(1));
    const KeyEvent& event = receiver->events.front();
    EXPECT_EQ(event.type, KeyEventType::keyUp);
    EXPECT_EQ(event.keyCode, 46);
    EXPECT_EQ(event.modifierFlags, 0x40000U);
    EXPECT_EQ(event.timestamp, 77U);
    EXPECT_EQ(event.x, 3);
    EXPECT_EQ(event.y, 4);
    EXPECT_EQ(event.windowNumber, -1);
    EXPECT_FALSE(event.isARepeat);
    EXPECT_TRUE(event.charactersIgnoringModifiers.empty());
    EXPECT_THAT(receiver->objects, testing::ElementsAre("hello"));
}

TEST_F(HotKeyCenter, CallsTheTaskOfAHotKeyWithoutATarget) {
    std::vector<std::uint16_t> keys;
    registerTask(46, controlAndCommand, [&](const KeyEvent& event) { keys.push_back(event.keyCode); });
    EXPECT_TRUE(service.pressAndRelease(46, controlCommandKeys));
    EXPECT_THAT(keys, testing::ElementsAre(46));
}

TEST_F(HotKeyCenter, FallsBackToTheTaskOfATargetThatDoesNotKnowTheAction) {
    int calls = 0;
    const RegisteredHotKey hotKey(
        46, controlAndCommand,
        {.target = receiver, .action = "unknown:", .object = {}, .task = [&](const KeyEvent&) { ++calls; }});
    hotKey.invokeWithEvent({});
    EXPECT_EQ(calls, 1);
    EXPECT_TRUE(receiver->events.empty());
}

TEST_F(HotKeyCenter, DoesNothingForAHotKeyWithNothingToInvoke) {
    registerTask(46, controlAndCommand, nullptr);
    EXPECT_TRUE(service.pressAndRelease(46, controlCommandKeys));
}

TEST_F(HotKeyCenter, IgnoresANoticeThatBelongsToNoHotKey) {
    registerAction(46);
    service.releaseUnknown(99);
    EXPECT_TRUE(receiver->events.empty());
}

TEST_F(HotKeyCenter, SilentlyIgnoresUnregisteringWhatIsNotRegistered) {
    registerTask(46, controlAndCommand);
    center.unregisterHotKeyWithKeyCodeModifierFlags(46, 0);
    EXPECT_THAT(*service.held, SizeIs(1));
    center.unregisterHotKeyWithKeyCodeModifierFlags(46, controlAndCommand);
    EXPECT_TRUE(service.held->empty());
}

TEST_F(HotKeyCenter, UnregistersByTargetAndByTargetAndAction) {
    registerTask(46, controlAndCommand);
    registerAction(35);
    registerAction(31, "bow:");
    center.unregisterHotKeysWithTargetAction(receiver.get(), "bow:");
    EXPECT_THAT(center.registeredHotKeys(), SizeIs(2));
    center.unregisterHotKeysWithTarget(receiver.get());
    ASSERT_THAT(center.registeredHotKeys(), SizeIs(1));
    EXPECT_EQ(center.registeredHotKeys().front()->keyCode(), 46);
    EXPECT_THAT(*service.held, SizeIs(1));
}

TEST_F(HotKeyCenter, UnregistersOneOfItsHotKeysAndRefusesAnyOtherObject) {
    registerTask(46, controlAndCommand);
    const auto hotKey = center.registeredHotKeys().front();
    center.unregisterHotKey(*hotKey);
    EXPECT_TRUE(center.registeredHotKeys().empty());
    EXPECT_TRUE(service.held->empty());
    try {
        center.unregisterHotKey(BWHotKey());
        FAIL() << "the public class by itself is no hot key of ours";
    } catch (const std::invalid_argument& refusal) {
        EXPECT_STREQ(refusal.what(), "Invalid hotkey");
    }
}

TEST_F(HotKeyCenter, GivesTheCombinationBackWhenAHotKeyEnds) {
    {
        std::uint32_t counter = 7;
        RegisteredHotKey hotKey(46, controlAndCommand, {});
        EXPECT_FALSE(hotKey.registerHotKey(service, counter));
        EXPECT_EQ(counter, 8U);
        EXPECT_EQ(hotKey.hotKeyID(), 7U);
        EXPECT_THAT(*service.held, SizeIs(1));
    }
    EXPECT_TRUE(service.held->empty());
}

TEST_F(HotKeyCenter, LetsATaskChangeTheHotKeys) {
    registerTask(46, controlAndCommand, [&](const KeyEvent&) {
        center.unregisterHotKeyWithKeyCodeModifierFlags(46, controlAndCommand);
        for (std::uint16_t key = 0; key < 20; ++key) registerTask(key, controlAndCommand);
    });
    EXPECT_TRUE(service.pressAndRelease(46, controlCommandKeys));
    EXPECT_THAT(*service.held, SizeIs(20));
}

TEST(HotKey, IsTheSameAsAnotherOfTheSameCombination) {
    const RegisteredHotKey one(46, 0x140000, {.target = {}, .action = "a", .object = {}, .task = {}});
    const RegisteredHotKey same(46, 0x140000, {});
    const RegisteredHotKey locked(46, 0x140000 | capsLock, {});
    EXPECT_TRUE(one.isEqual(same));
    EXPECT_EQ(one.hash(), same.hash());
    EXPECT_EQ(one.hash(), 46U + 0x140000U);
    EXPECT_FALSE(one.isEqual(locked));
}

TEST(HotKey, IsOfNoKeyByItself) {
    const BWHotKey hotKey;
    EXPECT_EQ(hotKey.keyCode(), 0);
    EXPECT_EQ(hotKey.modifierFlags(), 0U);
    EXPECT_EQ(hotKey.target(), nullptr);
    EXPECT_TRUE(hotKey.action().empty());
    EXPECT_TRUE(hotKey.object().empty());
    EXPECT_FALSE(hotKey.task());
}

} // namespace brimwick
