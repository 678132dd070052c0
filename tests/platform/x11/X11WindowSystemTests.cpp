#include "platform/Waiting.h"
#include "platform/linux/x11/X11WindowSystem.h"
#include "platform/x11/TestKeyboard.h"
#include "platform/x11/TestWindow.h"

#include <QLineEdit>

#include <gmock/gmock.h>

#include <atomic>

namespace brimwick {

namespace {

class X11WindowSystemTest : public testing::Test {
  protected:
    void SetUp() override { ASSERT_TRUE(windows_); }

    UserTime userTime_;
    std::unique_ptr<X11WindowSystem> windows_ = X11WindowSystem::create(userTime_);
    TestKeyboard keyboard_;
};

class HeldKeysTest : public X11WindowSystemTest {
  protected:
    /// Holds a key down in the first window until it repeats there.
    void holdKey(TestWindow& window, xcb_keycode_t key) {
        window.takeFocus();
        keyboard_.press(key);
        ASSERT_TRUE(waitFor([&] { return window.presses(key) > 3; })) << "this keyboard does not repeat";
    }

    TestWindow first_;
    TestWindow next_;
};

class ManagedWindowTest : public X11WindowSystemTest {
  protected:
    static void SetUpTestSuite() {
        manager_ = std::make_unique<QProcess>();
        manager_->setStandardErrorFile(QProcess::nullDevice());
        manager_->start("openbox", {"--sm-disable"});
        TestWindow probe(true);
        ASSERT_TRUE(waitFor([&] {
            probe.map();
            return probe.isManaged();
        })) << "openbox does not run";
    }
    static void TearDownTestSuite() {
        manager_->terminate();
        manager_->waitForFinished();
        manager_.reset();
    }
    void SetUp() override {
        X11WindowSystemTest::SetUp();
        foreign_ = std::make_unique<TestWindow>(true);
        ASSERT_TRUE(waitFor([&] { return foreign_->isActive(); }));
    }

    bool hasInputFocus(const QWidget& window) {
        xcb_connection_t* server = keyboard_.connection().get();
        const XcbOwned<xcb_get_input_focus_reply_t> reply(
            xcb_get_input_focus_reply(server, xcb_get_input_focus(server), nullptr));
        return reply && reply->focus == window.winId();
    }
    std::uint32_t userTimeProperty(const QWidget& window) {
        XcbConnection& connection = keyboard_.connection();
        const auto number = static_cast<xcb_window_t>(window.winId());
        const auto elsewhere = connection.propertyItems(number, connection.atom("_NET_WM_USER_TIME_WINDOW"));
        const auto times = connection.propertyItems(elsewhere.empty() ? number : elsewhere.front(),
                                                    connection.atom("_NET_WM_USER_TIME"));
        return times.empty() ? 0 : times.front();
    }

    static inline std::unique_ptr<QProcess> manager_;
    std::unique_ptr<TestWindow> foreign_;
};

} // namespace

TEST_F(HeldKeysTest, AKeyHeldDownDoesNotRepeatIntoTheNextWindow) {
    holdKey(first_, TestKey::returnKey);
    windows_->withholdHeldKeys();
    next_.takeFocus();
    runLoopFor(400);
    EXPECT_EQ(next_.presses(), 0);
    keyboard_.release(TestKey::returnKey);
    ASSERT_TRUE(waitFor([&] { return keyboard_.canGrabKeyboard(); }));
    keyboard_.tap(TestKey::a);
    EXPECT_TRUE(waitFor([&] { return next_.presses(TestKey::a) == 1; }));
    EXPECT_EQ(next_.presses(), 1);
}

TEST_F(HeldKeysTest, WithoutWithholdingAKeyDoesRepeatIntoTheNextWindow) {
    holdKey(first_, TestKey::returnKey);
    next_.takeFocus();
    EXPECT_TRUE(waitFor([&] { return next_.presses(TestKey::returnKey) > 0; }));
}

TEST_F(HeldKeysTest, TheKeyboardStaysWithheldUntilEveryKeyIsUp) {
    holdKey(first_, TestKey::returnKey);
    keyboard_.press(TestKey::f);
    windows_->withholdHeldKeys();
    keyboard_.release(TestKey::f);
    runLoopFor(300);
    EXPECT_FALSE(keyboard_.canGrabKeyboard());
    keyboard_.release(TestKey::returnKey);
    EXPECT_TRUE(waitFor([&] { return keyboard_.canGrabKeyboard(); }));
}

TEST_F(HeldKeysTest, AHotKeyPressedMeanwhileIsNotLost) {
    std::atomic<int> chords = 0;
    std::atomic<int> key = 0;
    windows_->setChordMissedHandler([&](const xcb_key_press_event_t& press) {
        key = press.detail;
        ++chords;
    });
    holdKey(first_, TestKey::returnKey);
    windows_->withholdHeldKeys();
    keyboard_.press(TestKey::controlLeft);
    keyboard_.press(TestKey::f);
    keyboard_.release(TestKey::returnKey);
    ASSERT_TRUE(waitFor([&] { return keyboard_.canGrabKeyboard(); }));
    runLoopFor(200);
    EXPECT_EQ(chords, 0) << "the hot key is still down";
    keyboard_.release(TestKey::f);
    EXPECT_TRUE(waitFor([&] { return chords == 1; }));
    EXPECT_EQ(key, TestKey::f);
}

TEST_F(HeldKeysTest, LettersTypedMeanwhileAreNoHotKeys) {
    std::atomic<int> chords = 0;
    windows_->setChordMissedHandler([&](const xcb_key_press_event_t&) { ++chords; });
    holdKey(first_, TestKey::returnKey);
    windows_->withholdHeldKeys();
    keyboard_.tap(TestKey::f);
    keyboard_.release(TestKey::returnKey);
    ASSERT_TRUE(waitFor([&] { return keyboard_.canGrabKeyboard(); }));
    runLoopFor(200);
    EXPECT_EQ(chords, 0);
}

TEST_F(HeldKeysTest, NothingIsTakenWhenNoKeyIsDown) {
    windows_->withholdHeldKeys();
    EXPECT_TRUE(keyboard_.canGrabKeyboard());
}

TEST_F(HeldKeysTest, NothingIsTakenForModifiersAndLocks) {
    keyboard_.press(TestKey::controlLeft);
    keyboard_.press(TestKey::superLeft);
    windows_->withholdHeldKeys();
    EXPECT_TRUE(keyboard_.canGrabKeyboard());
}

TEST_F(HeldKeysTest, KeysAreWithheldAgainTheNextTime) {
    for (int round = 0; round < 3; ++round) {
        holdKey(first_, TestKey::returnKey);
        windows_->withholdHeldKeys();
        EXPECT_FALSE(keyboard_.canGrabKeyboard());
        keyboard_.release(TestKey::returnKey);
        ASSERT_TRUE(waitFor([&] { return keyboard_.canGrabKeyboard(); }));
    }
}

TEST_F(HeldKeysTest, TheKeyboardIsFreeWhenTheWindowSystemIsGone) {
    holdKey(first_, TestKey::returnKey);
    windows_->withholdHeldKeys();
    EXPECT_FALSE(keyboard_.canGrabKeyboard());
    windows_.reset();
    EXPECT_TRUE(waitFor([&] { return keyboard_.canGrabKeyboard(); }));
}

TEST_F(ManagedWindowTest, AHiddenWindowIsShownWithTheFocusThoughTheUserTypedElsewhere) {
    QLineEdit window;
    window.winId();
    for (int round = 0; round < 5; ++round) {
        foreign_->setUserTime(foreign_->serverTime());
        userTime_.note(foreign_->serverTime());
        windows_->prepareToShow(window.winId());
        window.show();
        window.raise();
        windows_->makeKeyAndOrderFront(window.winId());
        ASSERT_TRUE(waitFor([&] { return window.isActiveWindow() && hasInputFocus(window); })) << round;
        EXPECT_EQ(userTimeProperty(window), userTime_.latest());
        keyboard_.tap(TestKey::a);
        EXPECT_TRUE(waitFor([&] { return window.text() == "a"; })) << round;
        window.clear();
        window.hide();
        ASSERT_TRUE(waitFor([&] { return foreign_->isActive(); })) << round;
    }
}

TEST_F(ManagedWindowTest, TheWindowManagerIsAskedWithTheTimeOfTheUsersLastRequest) {
    const auto spy = XcbConnection::connect();
    const std::uint32_t mask = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(spy->get(), spy->root(), XCB_CW_EVENT_MASK, &mask);
    spy->synchronise();
    QLineEdit window;
    window.winId();
    userTime_.note(foreign_->serverTime());
    windows_->prepareToShow(window.winId());
    window.show();
    windows_->makeKeyAndOrderFront(window.winId());

    std::optional<xcb_client_message_event_t> request;
    ASSERT_TRUE(waitFor([&] {
        while (const XcbOwned<xcb_generic_event_t> event{xcb_poll_for_event(spy->get())}) {
            if ((event->response_type & 0x7f) != XCB_CLIENT_MESSAGE) continue;
            const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(*event);
            if (message.type == spy->atom("_NET_ACTIVE_WINDOW")) request = message;
        }
        return request.has_value();
    }));
    EXPECT_EQ(request->window, window.winId());
    EXPECT_EQ(request->data.data32[0], 2U);
    EXPECT_EQ(request->data.data32[1], userTime_.latest());
    EXPECT_EQ(userTimeProperty(window), userTime_.latest());
}

TEST_F(X11WindowSystemTest, TheUserTimeIsPutWhereTheWindowManagerLooksForIt) {
    XcbConnection& connection = keyboard_.connection();
    const QWidget window;
    const TestWindow holder;
    const auto number = static_cast<xcb_window_t>(window.winId());
    const xcb_window_t holderNumber = holder.id();
    const auto timesOf = [&](xcb_window_t which) {
        return connection.propertyItems(which, connection.atom("_NET_WM_USER_TIME"));
    };
    windows_->prepareToShow(number);
    connection.synchronise();
    EXPECT_THAT(timesOf(number), testing::IsEmpty()) << "stamped with a time that is not known";

    userTime_.note(4711);
    windows_->prepareToShow(number);
    EXPECT_TRUE(waitFor([&] { return timesOf(number) == std::vector<std::uint32_t>{4711}; }));

    xcb_change_property(connection.get(), XCB_PROP_MODE_REPLACE, number,
                        connection.atom("_NET_WM_USER_TIME_WINDOW"), XCB_ATOM_WINDOW, 32, 1, &holderNumber);
    connection.synchronise();
    userTime_.note(4712);
    windows_->prepareToShow(number);
    EXPECT_TRUE(waitFor([&] { return timesOf(holderNumber) == std::vector<std::uint32_t>{4712}; }));
}

TEST_F(ManagedWindowTest, TheFocusGoesBackToThePreviousWindowWhileAKeyIsWithheld) {
    QLineEdit window;
    window.show();
    windows_->makeKeyAndOrderFront(window.winId());
    ASSERT_TRUE(waitFor([&] { return window.isActiveWindow() && hasInputFocus(window); }));
    keyboard_.press(TestKey::a);
    ASSERT_TRUE(waitFor([&] { return window.text().size() > 3; })) << "this keyboard does not repeat";
    windows_->withholdHeldKeys();
    window.hide();
    ASSERT_TRUE(waitFor([&] { return foreign_->isActive(); }));
    runLoopFor(300);
    EXPECT_EQ(foreign_->presses(), 0);
    keyboard_.release(TestKey::a);
    ASSERT_TRUE(waitFor([&] { return keyboard_.canGrabKeyboard(); }));
    keyboard_.tap(TestKey::m);
    EXPECT_TRUE(waitFor([&] { return foreign_->presses(TestKey::m) == 1; }));
    EXPECT_EQ(foreign_->presses(), 1);
}

TEST_F(ManagedWindowTest, AWindowIsShownWithTheFocusWhenTheRequestsTimeIsNotKnown) {
    QLineEdit window;
    window.winId();
    foreign_->setUserTime(foreign_->serverTime());
    userTime_.noteUntimed();
    windows_->prepareToShow(window.winId());
    window.show();
    windows_->makeKeyAndOrderFront(window.winId());
    EXPECT_TRUE(waitFor([&] { return window.isActiveWindow() && hasInputFocus(window); }));
}

TEST_F(ManagedWindowTest, TheUsersKeysAndClicksInOurWindowsAreNoted) {
    QLineEdit window;
    window.setGeometry(600, 400, 300, 100);
    window.show();
    window.activateWindow();
    ASSERT_TRUE(waitFor([&] { return window.isActiveWindow(); }));
    EXPECT_EQ(userTime_.latest(), XCB_CURRENT_TIME);
    const xcb_timestamp_t beforeKey = foreign_->serverTime();
    keyboard_.tap(TestKey::a);
    ASSERT_TRUE(waitFor([&] { return window.text() == "a"; }));
    EXPECT_GE(userTime_.latest(), beforeKey);
    runLoopFor(20);

    const xcb_timestamp_t beforeClick = foreign_->serverTime();
    ASSERT_LT(userTime_.latest(), beforeClick);
    const QPoint middle = window.mapToGlobal(window.rect().center());
    keyboard_.click(static_cast<std::int16_t>(middle.x()), static_cast<std::int16_t>(middle.y()));
    EXPECT_TRUE(waitFor([&] { return userTime_.latest() >= beforeClick; }));
}

TEST(UserTime, KeepsTheNewestAcrossTheEndOfTheServersClock) {
    UserTime time;
    EXPECT_EQ(time.latest(), XCB_CURRENT_TIME);
    time.note(4'294'967'000U);
    time.note(4'294'966'000U);
    EXPECT_EQ(time.latest(), 4'294'967'000U);
    time.note(100);
    EXPECT_EQ(time.latest(), 100U);
    time.noteUntimed();
    EXPECT_EQ(time.latest(), XCB_CURRENT_TIME);
    time.note(50);
    EXPECT_EQ(time.latest(), 50U);
}

} // namespace brimwick
