#include "platform/Waiting.h"
#include "platform/dbus/TestBus.h"
#include "platform/linux/dbus/DBusNotificationService.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusVirtualObject>

#include <gmock/gmock.h>

namespace brimwick {

namespace {

using testing::ElementsAre;

/// The desktop's notification service; answers at once, or when it is told to.
class NotificationSink : public QDBusVirtualObject {
  public:
    explicit NotificationSink(TestBus& bus) : connection_(bus.connect()) {
        connection_.registerVirtualObject("/org/freedesktop/Notifications", this);
        connection_.registerService("org.freedesktop.Notifications");
    }
    QString introspect(const QString& /*path*/) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        if (message.member() != "Notify") return false;
        received.push_back(message);
        unanswered_.push_back(message);
        if (answersAtOnce) answer(connection);
        return true;
    }
    void answerAll() { answer(connection_); }
    std::vector<std::string> bodies() const {
        std::vector<std::string> bodies;
        for (const QDBusMessage& message : received)
            bodies.push_back(message.arguments().at(4).toString().toStdString());
        return bodies;
    }

    bool answersAtOnce = true;
    std::vector<QDBusMessage> received;

  private:
    void answer(QDBusConnection connection) {
        for (const QDBusMessage& message : std::exchange(unanswered_, {}))
            connection.send(message.createReply(uint{1}));
    }

    QDBusConnection connection_;
    std::vector<QDBusMessage> unanswered_;
};

class DBusNotificationServiceTest : public testing::Test {
  protected:
    DBusNotificationService::Fallback keepFallenBack() {
        return [this](const DesktopNotification& notification) { fallenBack_.push_back(notification.body); };
    }
    static DesktopNotification text(std::string body) {
        return {.summary = "Brimwick", .body = std::move(body), .transient = false};
    }

    TestBus bus_;
    std::vector<std::string> fallenBack_;
};

} // namespace

TEST_F(DBusNotificationServiceTest, HandsANotificationToTheDesktop) {
    NotificationSink sink(bus_);
    DBusNotificationService service(bus_.connect());
    service.deliver(text("9:05:07 PM\nMoved file r\xc3\xa9sum\xc3\xa9 to folder b"));
    ASSERT_TRUE(waitFor([&] { return sink.received.size() == 1; }));
    EXPECT_EQ(sink.received.front().signature(), "susssasa{sv}i");
    const QVariantList arguments = sink.received.front().arguments();
    EXPECT_EQ(arguments.at(0), "Brimwick");
    EXPECT_EQ(arguments.at(1), 0U);
    EXPECT_EQ(arguments.at(2), "org.brimwick.Brimwick");
    EXPECT_EQ(arguments.at(3), "Brimwick");
    EXPECT_EQ(arguments.at(4), QString::fromUtf8("9:05:07 PM\nMoved file r\xc3\xa9sum\xc3\xa9 to folder b"));
    EXPECT_TRUE(arguments.at(5).toStringList().isEmpty());
    const auto hints = qdbus_cast<QVariantMap>(arguments.at(6));
    EXPECT_EQ(hints.value("urgency"), QVariant::fromValue(uchar{1}));
    EXPECT_EQ(hints.value("transient"), false);
    EXPECT_EQ(hints.value("desktop-entry"), "org.brimwick.Brimwick");
    EXPECT_EQ(arguments.at(7), -1);
}

TEST_F(DBusNotificationServiceTest, MarksWhatIsOfPassingInterest) {
    NotificationSink sink(bus_);
    DBusNotificationService service(bus_.connect());
    service.deliver({.summary = "Brimwick", .body = "Index rebuilding complete.", .transient = true});
    ASSERT_TRUE(waitFor([&] { return sink.received.size() == 1; }));
    const auto hints = qdbus_cast<QVariantMap>(sink.received.front().arguments().at(6));
    EXPECT_EQ(hints.value("urgency"), QVariant::fromValue(uchar{0}));
    EXPECT_EQ(hints.value("transient"), true);
}

TEST_F(DBusNotificationServiceTest, EscapesMarkup) {
    NotificationSink sink(bus_);
    DBusNotificationService service(bus_.connect());
    service.deliver(text("<b>Tom & Jerry</b> &amp; \"co\""));
    ASSERT_TRUE(waitFor([&] { return sink.received.size() == 1; }));
    EXPECT_THAT(sink.bodies(), ElementsAre("&lt;b&gt;Tom &amp; Jerry&lt;/b&gt; &amp;amp; \"co\""));
}

TEST_F(DBusNotificationServiceTest, MakesANameThatIsNotUtf8Valid) {
    NotificationSink sink(bus_);
    DBusNotificationService service(bus_.connect());
    service.deliver(text("a\xff"
                         "b\x1b"
                         "c"));
    ASSERT_TRUE(waitFor([&] { return sink.received.size() == 1; }));
    EXPECT_THAT(sink.bodies(), ElementsAre("a\xef\xbf\xbd"
                                           "b\xef\xbf\xbd"
                                           "c"));
}

TEST_F(DBusNotificationServiceTest, QueuesInOrderBehindAServiceThatDoesNotAnswer) {
    NotificationSink sink(bus_);
    sink.answersAtOnce = false;
    DBusNotificationService service(bus_.connect(), keepFallenBack());
    std::vector<std::string> all;
    for (int i = 0; i < 200; ++i) {
        all.push_back(std::to_string(i));
        service.deliver(text(all.back()));
    }
    ASSERT_TRUE(waitFor([&] { return sink.received.size() >= 32; }));
    runLoopFor(100);
    EXPECT_EQ(sink.received.size(), 32U);
    sink.answerAll();
    ASSERT_TRUE(waitFor([&] { return sink.received.size() >= 64; }));
    runLoopFor(100);
    EXPECT_EQ(sink.received.size(), 64U);
    sink.answersAtOnce = true;
    sink.answerAll();
    ASSERT_TRUE(waitFor([&] { return sink.received.size() == all.size(); }));
    EXPECT_EQ(sink.bodies(), all);
    EXPECT_TRUE(fallenBack_.empty());
}

TEST_F(DBusNotificationServiceTest, WritesToStderrWithoutANotificationService) {
    DBusNotificationService service(bus_.connect(), keepFallenBack());
    testing::internal::CaptureStderr();
    service.deliver(text("9:05:07 PM\nfirst\nline"));
    service.deliver(text("9:05:08 PM\n<second>"));
    EXPECT_TRUE(waitFor([&] { return fallenBack_.size() == 2; }));
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "Brimwick: 9:05:07 PM first line\nBrimwick: 9:05:08 PM <second>\n");
    EXPECT_THAT(fallenBack_, ElementsAre("9:05:07 PM\nfirst\nline", "9:05:08 PM\n<second>"));
}

TEST_F(DBusNotificationServiceTest, WritesToStderrWithoutABus) {
    DBusNotificationService service(QDBusConnection("no such connection"), keepFallenBack());
    testing::internal::CaptureStderr();
    service.deliver(text("first"));
    service.deliver(text("second"));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Brimwick: first\nBrimwick: second\n");
    EXPECT_THAT(fallenBack_, ElementsAre("first", "second"));
}

TEST_F(DBusNotificationServiceTest, LosesNothingWhenTheBusEnds) {
    NotificationSink sink(bus_);
    sink.answersAtOnce = false;
    DBusNotificationService service(bus_.connect(), keepFallenBack());
    std::vector<std::string> all;
    for (int i = 0; i < 40; ++i) {
        all.push_back(std::to_string(i));
        service.deliver(text(all.back()));
    }
    ASSERT_TRUE(waitFor([&] { return sink.received.size() == 32; }));
    testing::internal::CaptureStderr();
    bus_.stop();
    EXPECT_TRUE(waitFor([&] { return fallenBack_.size() >= all.size(); }));
    service.deliver(text("last"));
    all.emplace_back("last");
    testing::internal::GetCapturedStderr();
    EXPECT_THAT(fallenBack_, testing::UnorderedElementsAreArray(all));
}

TEST_F(DBusNotificationServiceTest, WritesToStderrWhatWasNeverHandedOver) {
    NotificationSink sink(bus_);
    sink.answersAtOnce = false;
    testing::internal::CaptureStderr();
    {
        DBusNotificationService service(bus_.connect());
        for (int i = 0; i < 34; ++i) service.deliver(text(std::to_string(i)));
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Brimwick: 32\nBrimwick: 33\n");
}

} // namespace brimwick
