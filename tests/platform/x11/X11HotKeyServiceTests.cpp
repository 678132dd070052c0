#include "platform/Waiting.h"
#include "platform/linux/x11/X11HotKeyService.h"
#include "platform/x11/TestKeyboard.h"
#include "platform/x11/TestWindow.h"

#include <gmock/gmock.h>

namespace brimwick {

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

constexpr std::uint16_t virtualF = 3;
constexpr std::uint16_t virtualM = 46;
constexpr std::uint32_t controlCommand = HotKeyModifier::control | HotKeyModifier::command;
constexpr unsigned controlSuper = XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_4;

class X11HotKeyServiceTest : public testing::Test {
  protected:
    X11HotKeyServiceTest() {
        service_.setReleaseHandler([this](const HotKeyRelease& notice) {
            releases_.push_back(notice);
            if (onRelease_) onRelease_();
        });
        service_.setPressHandler([this] { ++presses_; });
    }
    ~X11HotKeyServiceTest() override {
        if (mappingChanged_) TestKeyboard::run("setxkbmap", {"us"});
    }

    std::vector<std::uint32_t> released() const {
        std::vector<std::uint32_t> identifiers;
        for (const HotKeyRelease& notice : releases_) identifiers.push_back(notice.identifier);
        return identifiers;
    }
    void pressControlSuper() {
        keyboard_.press(TestKey::controlLeft);
        keyboard_.press(TestKey::superLeft);
    }
    void releaseControlSuper() {
        keyboard_.release(TestKey::superLeft);
        keyboard_.release(TestKey::controlLeft);
    }
    void remap(const QStringList& expressions) {
        mappingChanged_ = true;
        QStringList arguments;
        for (const QString& expression : expressions) arguments << "-e" << expression;
        ASSERT_TRUE(TestKeyboard::run("xmodmap", arguments));
    }

    UserTime userTime_;
    X11HotKeyService service_{userTime_};
    TestKeyboard keyboard_;
    std::vector<HotKeyRelease> releases_;
    std::function<void()> onRelease_;
    int presses_ = 0;
    bool mappingChanged_ = false;
};

} // namespace

TEST_F(X11HotKeyServiceTest, IsAvailable) {
    EXPECT_TRUE(service_.capability().available);
}

TEST_F(X11HotKeyServiceTest, FiresWhenTheKeyGoesUp) {
    const auto grant = service_.grab(virtualM, controlCommand, 7);
    ASSERT_TRUE(grant.grab) << grant.refusal;
    pressControlSuper();
    keyboard_.press(TestKey::m);
    ASSERT_TRUE(waitFor([&] { return presses_ == 1; }));
    EXPECT_TRUE(releases_.empty());
    keyboard_.release(TestKey::m);
    ASSERT_TRUE(waitFor([&] { return !releases_.empty(); }));
    EXPECT_THAT(released(), ElementsAre(7));
    EXPECT_EQ(releases_.front().modifierFlags, 0x140000U);
    EXPECT_EQ(releases_.front().timestamp, userTime_.latest());
    EXPECT_NE(userTime_.latest(), XCB_CURRENT_TIME);
}

TEST_F(X11HotKeyServiceTest, FiresOnceForAKeyHeldDownThoughItRepeats) {
    TestWindow window;
    window.takeFocus();
    keyboard_.press(TestKey::m);
    ASSERT_TRUE(waitFor([&] { return window.presses(TestKey::m) > 3; })) << "this keyboard does not repeat";
    keyboard_.release(TestKey::m);

    const auto grant = service_.grab(virtualM, controlCommand, 7);
    pressControlSuper();
    keyboard_.press(TestKey::m);
    runLoopFor(400);
    keyboard_.release(TestKey::m);
    releaseControlSuper();
    ASSERT_TRUE(waitFor([&] { return !releases_.empty(); }));
    keyboard_.tap(TestKey::a);
    runLoopFor(100);
    EXPECT_THAT(released(), ElementsAre(7));
    EXPECT_EQ(presses_, 1);
}

TEST_F(X11HotKeyServiceTest, FiresWhenTheModifiersGoUpFirst) {
    const auto grant = service_.grab(virtualM, controlCommand, 7);
    pressControlSuper();
    keyboard_.press(TestKey::m);
    releaseControlSuper();
    keyboard_.release(TestKey::m);
    ASSERT_TRUE(waitFor([&] { return !releases_.empty(); }));
    EXPECT_THAT(released(), ElementsAre(7));
    EXPECT_EQ(releases_.front().modifierFlags, 0U);
}

TEST_F(X11HotKeyServiceTest, FiresWhateverLocksAreOn) {
    const auto grant = service_.grab(virtualM, controlCommand, 7);
    const auto fire = [&] {
        releases_.clear();
        pressControlSuper();
        keyboard_.tap(TestKey::m);
        releaseControlSuper();
        return waitFor([&] { return releases_.size() == 1; });
    };
    EXPECT_TRUE(fire());
    keyboard_.toggleLock(TestKey::capsLock);
    EXPECT_TRUE(fire());
    keyboard_.toggleLock(TestKey::numLock);
    EXPECT_TRUE(fire());
    keyboard_.toggleLock(TestKey::capsLock);
    EXPECT_TRUE(fire());
}

TEST_F(X11HotKeyServiceTest, TellsHotKeysOfOneKeyApart) {
    const auto plain = service_.grab(virtualM, HotKeyModifier::control, 1);
    const auto shifted = service_.grab(virtualM, HotKeyModifier::control | HotKeyModifier::shift, 2);
    const auto option = service_.grab(virtualM, HotKeyModifier::control | HotKeyModifier::option, 3);
    const auto other = service_.grab(virtualF, HotKeyModifier::control, 4);
    keyboard_.press(TestKey::controlLeft);
    keyboard_.press(TestKey::shiftLeft);
    keyboard_.tap(TestKey::m);
    keyboard_.release(TestKey::shiftLeft);
    keyboard_.press(TestKey::altLeft);
    keyboard_.tap(TestKey::m);
    keyboard_.release(TestKey::altLeft);
    keyboard_.tap(TestKey::f);
    keyboard_.tap(TestKey::m);
    ASSERT_TRUE(waitFor([&] { return releases_.size() >= 4; }));
    EXPECT_THAT(released(), ElementsAre(2, 3, 4, 1));
}

TEST_F(X11HotKeyServiceTest, LeavesOtherCombinationsToTheProgramInFront) {
    TestWindow window;
    window.takeFocus();
    const auto grant = service_.grab(virtualM, controlCommand, 7);
    keyboard_.press(TestKey::controlLeft);
    keyboard_.tap(TestKey::m);
    keyboard_.press(TestKey::superLeft);
    keyboard_.press(TestKey::shiftLeft);
    keyboard_.tap(TestKey::m);
    ASSERT_TRUE(waitFor([&] { return window.presses(TestKey::m) == 2; }));
    runLoopFor(50);
    EXPECT_TRUE(releases_.empty());
    EXPECT_EQ(presses_, 0);
}

TEST_F(X11HotKeyServiceTest, KeepsTheHotKeyFromTheProgramInFront) {
    TestWindow window;
    window.takeFocus();
    const auto grant = service_.grab(virtualM, controlCommand, 7);
    pressControlSuper();
    keyboard_.press(TestKey::m);
    runLoopFor(200);
    keyboard_.release(TestKey::m);
    releaseControlSuper();
    ASSERT_TRUE(waitFor([&] { return !releases_.empty(); }));
    EXPECT_EQ(window.presses(TestKey::m), 0);
}

TEST_F(X11HotKeyServiceTest, LeavesTheKeyboardFreeForTheReleaseHandler) {
    const auto grant = service_.grab(virtualM, controlCommand, 7);
    bool isFree = false;
    onRelease_ = [&] { isFree = keyboard_.canGrabKeyboard(); };
    pressControlSuper();
    keyboard_.press(TestKey::m);
    EXPECT_FALSE(keyboard_.canGrabKeyboard());
    keyboard_.release(TestKey::m);
    ASSERT_TRUE(waitFor([&] { return !releases_.empty(); }));
    EXPECT_TRUE(isFree);
}

TEST_F(X11HotKeyServiceTest, CanBeGrabbedAnewFromTheReleaseHandler) {
    auto grant = service_.grab(virtualM, controlCommand, 7);
    onRelease_ = [&] {
        grant.grab.reset();
        grant = service_.grab(virtualM, controlCommand, 8);
    };
    pressControlSuper();
    keyboard_.tap(TestKey::m);
    ASSERT_TRUE(waitFor([&] { return releases_.size() == 1; }));
    onRelease_ = {};
    keyboard_.tap(TestKey::m);
    ASSERT_TRUE(waitFor([&] { return releases_.size() == 2; }));
    EXPECT_THAT(released(), ElementsAre(7, 8));
}

TEST_F(X11HotKeyServiceTest, RefusesWhatAnotherProgramHasAndKeepsNoPartOfIt) {
    ASSERT_TRUE(keyboard_.grabKey(TestKey::m, controlSuper | XCB_MOD_MASK_LOCK));
    const auto grant = service_.grab(virtualM, controlCommand, 7);
    EXPECT_FALSE(grant.grab);
    EXPECT_EQ(grant.refusal, "Another program already uses this hot key.");
    for (const unsigned locks : {0U, unsigned{XCB_MOD_MASK_2}, unsigned{XCB_MOD_MASK_LOCK},
                                 unsigned{XCB_MOD_MASK_LOCK | XCB_MOD_MASK_2}})
        EXPECT_TRUE(waitFor([&] { return keyboard_.canGrabKey(TestKey::m, controlSuper | locks); })) << locks;
    EXPECT_TRUE(service_.grab(virtualM, controlCommand, 7).grab);
}

TEST_F(X11HotKeyServiceTest, RefusesASecondGrabOfOneCombination) {
    const auto first = service_.grab(virtualM, controlCommand, 7);
    const auto second = service_.grab(virtualM, controlCommand, 8);
    EXPECT_FALSE(second.grab);
    EXPECT_EQ(second.refusal, "Brimwick already uses this hot key.");
    pressControlSuper();
    keyboard_.tap(TestKey::m);
    ASSERT_TRUE(waitFor([&] { return !releases_.empty(); }));
    EXPECT_THAT(released(), ElementsAre(7));
}

TEST_F(X11HotKeyServiceTest, RefusesAKeyThatTheKeyboardLacks) {
    const auto noSuchCode = service_.grab(200, controlCommand, 7);
    EXPECT_FALSE(noSuchCode.grab);
    EXPECT_EQ(noSuchCode.refusal, "There is no such key on this keyboard.");
    remap({"keycode 94 ="});
    const auto notMapped = service_.grab(10, controlCommand, 7);
    EXPECT_FALSE(notMapped.grab);
    EXPECT_EQ(notMapped.refusal, "There is no such key on this keyboard.");
}

TEST_F(X11HotKeyServiceTest, GivesTheCombinationBackWithTheGrab) {
    auto grant = service_.grab(virtualM, controlCommand, 7);
    ASSERT_TRUE(grant.grab);
    EXPECT_FALSE(keyboard_.canGrabKey(TestKey::m, controlSuper));
    grant.grab.reset();
    EXPECT_TRUE(waitFor([&] { return keyboard_.canGrabKey(TestKey::m, controlSuper); }));
    for (const unsigned locks : {unsigned{XCB_MOD_MASK_2}, unsigned{XCB_MOD_MASK_LOCK},
                                 unsigned{XCB_MOD_MASK_LOCK | XCB_MOD_MASK_2}})
        EXPECT_TRUE(waitFor([&] { return keyboard_.canGrabKey(TestKey::m, controlSuper | locks); })) << locks;
}

TEST_F(X11HotKeyServiceTest, FollowsALockToAnotherModifier) {
    const auto grant = service_.grab(virtualM, controlCommand, 7);
    ASSERT_TRUE(keyboard_.canGrabKey(TestKey::m, controlSuper | XCB_MOD_MASK_3));
    remap({"remove mod2 = Num_Lock", "add mod3 = Num_Lock"});
    ASSERT_TRUE(waitFor([&] { return !keyboard_.canGrabKey(TestKey::m, controlSuper | XCB_MOD_MASK_3); }));
    EXPECT_TRUE(waitFor([&] { return keyboard_.canGrabKey(TestKey::m, controlSuper | XCB_MOD_MASK_2); }));
    keyboard_.toggleLock(TestKey::numLock);
    pressControlSuper();
    keyboard_.tap(TestKey::m);
    releaseControlSuper();
    EXPECT_TRUE(waitFor([&] { return releases_.size() == 1; }));
    keyboard_.toggleLock(TestKey::numLock);
}

TEST_F(X11HotKeyServiceTest, TakesTheScrollLockInWhereItIsAModifier) {
    const auto grant = service_.grab(virtualM, controlCommand, 7);
    remap({"add mod3 = Scroll_Lock"});
    const auto taken = [&](unsigned locks) {
        return !keyboard_.canGrabKey(TestKey::m, controlSuper | locks);
    };
    EXPECT_TRUE(waitFor(
        [&] { return taken(XCB_MOD_MASK_3) && taken(XCB_MOD_MASK_3 | XCB_MOD_MASK_2 | XCB_MOD_MASK_LOCK); }));
}

TEST_F(X11HotKeyServiceTest, FollowsCommandToAnotherModifier) {
    const auto grant = service_.grab(virtualM, controlCommand, 7);
    remap({"clear mod4", "add mod3 = Super_L"});
    ASSERT_TRUE(
        waitFor([&] { return !keyboard_.canGrabKey(TestKey::m, XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_3); }));
    EXPECT_TRUE(waitFor([&] { return keyboard_.canGrabKey(TestKey::m, controlSuper); }));
    pressControlSuper();
    keyboard_.press(TestKey::m);
    keyboard_.release(TestKey::m);
    ASSERT_TRUE(waitFor([&] { return releases_.size() == 1; }));
    EXPECT_EQ(releases_.front().modifierFlags, 0x140000U);
}

TEST_F(X11HotKeyServiceTest, KeepsWorkingWhenTheLayoutChanges) {
    const auto grant = service_.grab(virtualM, controlCommand, 7);
    mappingChanged_ = true;
    ASSERT_TRUE(TestKeyboard::run("setxkbmap", {"fr"}));
    runLoopFor(100);
    pressControlSuper();
    keyboard_.tap(TestKey::m);
    EXPECT_TRUE(waitFor([&] { return releases_.size() == 1; }));
}

TEST(X11HotKeyServiceWithoutServer, SaysWhyItIsNotAvailable) {
    const QByteArray display = qgetenv("DISPLAY");
    qputenv("DISPLAY", ":987654");
    UserTime userTime;
    X11HotKeyService service(userTime);
    qputenv("DISPLAY", display);
    EXPECT_FALSE(service.capability().available);
    EXPECT_THAT(service.capability().reason, HasSubstr("cannot be reached"));
    const auto grant = service.grab(virtualM, controlCommand, 7);
    EXPECT_FALSE(grant.grab);
    EXPECT_EQ(grant.refusal, service.capability().reason);
}

TEST(X11HotKeyServiceWithoutServer, SaysOnceThatTheServerIsGone) {
    QProcess server;
    server.start("Xvfb", {"-displayfd", "1", "-nolisten", "tcp"});
    ASSERT_TRUE(server.waitForReadyRead());
    const QByteArray number = server.readLine().trimmed();
    const QByteArray display = qgetenv("DISPLAY");
    qputenv("DISPLAY", ":" + number);
    UserTime userTime;
    auto service = std::make_unique<X11HotKeyService>(userTime);
    qputenv("DISPLAY", display);
    auto grant = service->grab(virtualM, controlCommand, 7);
    ASSERT_TRUE(grant.grab) << grant.refusal;

    testing::internal::CaptureStderr();
    server.terminate();
    EXPECT_TRUE(waitFor([&] { return !service->capability().available; }));
    runLoopFor(50);
    const auto refused = service->grab(virtualF, controlCommand, 8);
    grant.grab.reset();
    service.reset();
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "Brimwick: Hot keys stopped working because the connection to the X server broke.\n");
    EXPECT_FALSE(refused.grab);
    server.waitForFinished();
}

TEST_F(X11HotKeyServiceTest, DoesNotFireForAKeyThatWasDownWhenItWasGrabbed) {
    pressControlSuper();
    keyboard_.press(TestKey::m);
    const HotKeyGrant grant = service_.grab(virtualM, controlCommand, 7);
    ASSERT_TRUE(grant.grab);
    runLoopFor(300);
    keyboard_.release(TestKey::m);
    releaseControlSuper();
    runLoopFor(100);
    EXPECT_TRUE(released().empty());
    EXPECT_EQ(presses_, 0);

    pressControlSuper();
    keyboard_.tap(TestKey::m);
    releaseControlSuper();
    EXPECT_TRUE(waitFor([this] { return !releases_.empty(); }));
    EXPECT_THAT(released(), ElementsAre(7));
}

TEST_F(X11HotKeyServiceTest, FiresForTheNextPressHoweverSoonItComesAfterTheKeyWasGrabbed) {
    pressControlSuper();
    keyboard_.press(TestKey::m);
    const HotKeyGrant grant = service_.grab(virtualM, controlCommand, 7);
    ASSERT_TRUE(grant.grab);
    // All of it before the program looks at the keyboard again, as when it is busy.
    keyboard_.release(TestKey::m);
    keyboard_.tap(TestKey::m);
    releaseControlSuper();
    EXPECT_TRUE(waitFor([this] { return !releases_.empty(); }));
    EXPECT_THAT(released(), ElementsAre(7));
}

} // namespace brimwick
