#include "platform/Waiting.h"
#include "platform/dbus/TestBus.h"
#include "platform/linux/dbus/DBusRunningInstance.h"
#include "platform/linux/dbus/InstanceProtocol.h"
#include "platform/linux/dbus/SingleInstance.h"

#include <QDBusPendingCall>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <future>

namespace brimwick {

namespace {

using testing::ElementsAre;

/// What a second start got back.
struct Outcome {
    std::optional<RequestResult> result;
    std::string printed;
};

/// Another start of the program, on a thread of its own, as it waits for its answer.
class SecondStart {
  public:
    SecondStart(TestBus& bus, InstanceRequest request, ByteSink output = {})
        : outcome_(std::async(std::launch::async, [connection = bus.connect(), request = std::move(request),
                                                   output = std::move(output)] {
              Outcome outcome;
              DBusRunningInstance running([&connection] { return connection; });
              outcome.result = running.request(request, [&](std::string_view bytes) {
                  outcome.printed += bytes;
                  return output ? output(bytes) : true;
              });
              return outcome;
          })) {}

    bool hasEnded() const { return outcome_.wait_for(std::chrono::seconds(0)) == std::future_status::ready; }
    /// Runs the main loop until it has ended.
    Outcome outcome() {
        EXPECT_TRUE(waitFor([this] { return hasEnded(); }));
        return outcome_.get();
    }

  private:
    std::future<Outcome> outcome_;
};

/// A request in the making, over one connection: what is sent later over it arrives later.
class RequestOverConnection {
  public:
    RequestOverConnection(const QDBusConnection& connection, const InstanceRequest& request)
        : connection_(connection) {
        std::array<int, 2> ends = {};
        EXPECT_EQ(pipe2(ends.data(), O_CLOEXEC), 0);
        fcntl(ends[0], F_SETFL, O_NONBLOCK);
        reading_.giveFileDescriptor(ends[0]);
        QDBusUnixFileDescriptor writing;
        writing.giveFileDescriptor(ends[1]);
        answer_.emplace(send(InstanceProtocol::argumentsOf(request, writing)));
    }
    /// Until it is with the program: a call that is no request, and is refused at once, comes after it.
    void waitUntilArrived() const {
        const QDBusPendingCall refusal = send({QStringLiteral("no request")});
        EXPECT_TRUE(waitFor([&] { return refusal.isFinished(); }));
        EXPECT_TRUE(refusal.isError());
    }
    bool isAnswered() const { return answer_->isFinished(); }
    /// What was printed for it; waits for the answer.
    std::string printed() const {
        EXPECT_TRUE(waitFor([this] { return isAnswered(); }));
        if (!isAnswered()) return "no answer";
        std::array<char, 4096> bytes{};
        const ssize_t count = read(reading_.fileDescriptor(), bytes.data(), bytes.size());
        return {bytes.data(), static_cast<std::size_t>(std::max<ssize_t>(count, 0))};
    }

  private:
    QDBusPendingCall send(const QVariantList& arguments) const {
        auto call = QDBusMessage::createMethodCall(InstanceProtocol::busName, InstanceProtocol::objectPath,
                                                   InstanceProtocol::interface, InstanceProtocol::method);
        call.setArguments(arguments);
        return connection_.asyncCall(call);
    }

    QDBusConnection connection_;
    QDBusUnixFileDescriptor reading_;
    std::optional<QDBusPendingCall> answer_;
};

InstanceService::Work printing(std::string text, RequestResult result = {}) {
    return [text = std::move(text), result](const ByteSink& output) {
        output(text);
        return result;
    };
}

/// Prints for ever, or until nobody reads; counts what was taken and tells how it ended.
struct EndlessPrinting {
    std::atomic<std::size_t> taken = 0;
    std::atomic<bool> hasEnded = false;

    InstanceService::Work work() {
        return [this](const ByteSink& output) {
            const std::string portion(65536, 'x');
            while (output(portion)) taken += portion.size();
            hasEnded = true;
            return RequestResult{.exitCode = 1, .message = ""};
        };
    }
    /// Whether the pipe is full: no more is taken though nobody was told to stop.
    bool isStuck() const {
        const std::size_t before = taken;
        runLoopFor(200);
        return before == taken && !hasEnded;
    }
};

class SingleInstanceTest : public testing::Test {
  protected:
    void answerWith(InstanceService::Work work) {
        instance_->setHandler(
            [this, work = std::move(work)](const InstanceRequest& request, const auto& answer) {
                requests_.push_back(request);
                answer(work);
            });
    }

    TestBus bus_;
    std::optional<SingleInstance> instance_{std::in_place, bus_.connect()};
    std::vector<InstanceRequest> requests_;
};

} // namespace

TEST_F(SingleInstanceTest, IsTheOnlyOneWithItsName) {
    EXPECT_FALSE(instance_->anotherIsRunning());
    EXPECT_TRUE(SingleInstance(bus_.connect()).anotherIsRunning());
    instance_.reset();
    EXPECT_FALSE(SingleInstance(bus_.connect()).anotherIsRunning());
}

TEST_F(SingleInstanceTest, GetsVerbAndArgumentsAsTheBytesThatTheyAre) {
    answerWith(printing("out\0put\xFF", {.exitCode = 3, .message = "no \xFE"}));
    const std::string nul("a\0b", 3);
    SecondStart second(bus_, {.verb = "search", .arguments = {"\xFF\n", "", nul}});
    const Outcome outcome = second.outcome();
    ASSERT_TRUE(outcome.result);
    EXPECT_EQ(outcome.result->exitCode, 3);
    EXPECT_EQ(outcome.result->message, "no \xFE");
    EXPECT_EQ(outcome.printed, "out");
    ASSERT_EQ(requests_.size(), 1U);
    EXPECT_EQ(requests_[0].verb, "search");
    EXPECT_THAT(requests_[0].arguments, ElementsAre("\xFF\n", "", nul));
}

TEST_F(SingleInstanceTest, GetsARequestWithoutArguments) {
    answerWith(printing(""));
    const Outcome outcome = SecondStart(bus_, {.verb = "undo", .arguments = {}}).outcome();
    ASSERT_TRUE(outcome.result);
    EXPECT_EQ(outcome.result->exitCode, 0);
    EXPECT_TRUE(requests_.at(0).arguments.empty());
}

TEST_F(SingleInstanceTest, HandsOnMoreThanAnyMessageOrPipeHolds) {
    std::string much;
    while (much.size() < 50'000'000) much += "line " + std::to_string(much.size()) + "\n";
    answerWith(printing(much));
    const Outcome outcome = SecondStart(bus_, {.verb = "search", .arguments = {}}).outcome();
    ASSERT_TRUE(outcome.result);
    EXPECT_TRUE(outcome.printed == much);
}

TEST_F(SingleInstanceTest, NeitherWaitsForASlowReaderNorKeepsOthersWaiting) {
    EndlessPrinting printing;
    answerWith(printing.work());
    std::promise<void> released;
    SecondStart slow(bus_, {.verb = "slow", .arguments = {}},
                     [reading = released.get_future().share()](std::string_view) {
                         reading.wait();
                         return false;
                     });
    ASSERT_TRUE(waitFor([&] { return printing.taken > 0 && printing.isStuck(); }));

    answerWith(brimwick::printing("quick"));
    EXPECT_EQ(SecondStart(bus_, {.verb = "quick", .arguments = {}}).outcome().printed, "quick");
    EXPECT_FALSE(slow.hasEnded());
    released.set_value();
    EXPECT_TRUE(slow.outcome().result);
    EXPECT_TRUE(printing.hasEnded);
}

TEST_F(SingleInstanceTest, BearsAReaderThatLeaves) {
    EndlessPrinting printing;
    answerWith(printing.work());
    SecondStart leaving(bus_, {.verb = "search", .arguments = {}}, [](std::string_view) { return false; });
    const Outcome outcome = leaving.outcome();
    EXPECT_TRUE(printing.hasEnded);
    ASSERT_TRUE(outcome.result);
    EXPECT_EQ(outcome.result->exitCode, 1);
}

TEST_F(SingleInstanceTest, EndsPromptlyThoughItsReaderIsSlow) {
    EndlessPrinting printing;
    answerWith(printing.work());
    std::promise<void> released;
    SecondStart slow(bus_, {.verb = "search", .arguments = {}},
                     [reading = released.get_future().share()](std::string_view) {
                         reading.wait();
                         return true;
                     });
    ASSERT_TRUE(waitFor([&] { return printing.taken > 0 && printing.isStuck(); }));
    instance_.reset();
    EXPECT_TRUE(printing.hasEnded);
    released.set_value();
    const Outcome outcome = slow.outcome();
    ASSERT_TRUE(outcome.result);
    EXPECT_EQ(outcome.result->exitCode, 1);
    EXPECT_NE(outcome.result->message, "");
}

TEST_F(SingleInstanceTest, KeepsRequestsThatComeBeforeAnyoneCanAnswer) {
    const RequestOverConnection early(bus_.connect(), {.verb = "first", .arguments = {}});
    early.waitUntilArrived();
    EXPECT_FALSE(early.isAnswered());
    answerWith(printing("answer"));
    EXPECT_EQ(early.printed(), "answer");
}

TEST_F(SingleInstanceTest, MayAnswerLater) {
    InstanceService::Answer later;
    instance_->setHandler([&later](const InstanceRequest&, const auto& answer) { later = answer; });
    SecondStart second(bus_, {.verb = "search", .arguments = {}});
    ASSERT_TRUE(waitFor([&] { return static_cast<bool>(later); }));
    EXPECT_FALSE(second.hasEnded());
    std::exchange(later, nullptr)(printing("late"));
    EXPECT_EQ(second.outcome().printed, "late");
}

TEST_F(SingleInstanceTest, ReportsWorkThatFails) {
    answerWith([](const ByteSink&) -> RequestResult { throw std::runtime_error("no memory"); });
    const Outcome outcome = SecondStart(bus_, {.verb = "search", .arguments = {}}).outcome();
    ASSERT_TRUE(outcome.result);
    EXPECT_EQ(outcome.result->exitCode, 1);
    EXPECT_EQ(outcome.result->message, "no memory");
}

TEST_F(SingleInstanceTest, RefusesACallThatIsNoRequest) {
    auto call = QDBusMessage::createMethodCall("org.brimwick.Brimwick", "/org/brimwick/Brimwick",
                                               "org.brimwick.Brimwick", "Request");
    call << QStringLiteral("search");
    auto reply = bus_.connect().asyncCall(call);
    ASSERT_TRUE(waitFor([&] { return reply.isFinished(); }));
    EXPECT_TRUE(reply.isError());
}

TEST_F(SingleInstanceTest, CanBeLookedIntoOnTheBus) {
    auto reply = bus_.connect().asyncCall(
        QDBusMessage::createMethodCall("org.brimwick.Brimwick", "/org/brimwick/Brimwick",
                                       "org.freedesktop.DBus.Introspectable", "Introspect"));
    ASSERT_TRUE(waitFor([&] { return reply.isFinished(); }));
    EXPECT_THAT(reply.reply().arguments().value(0).toString().toStdString(),
                testing::HasSubstr("\"Request\""));
}

TEST_F(SingleInstanceTest, IsNotThereForAnyoneOnceItEnded) {
    instance_.reset();
    EXPECT_FALSE(SecondStart(bus_, {.verb = "search", .arguments = {}}).outcome().result);
}

TEST(RunningInstance, IsNotThereWithoutABus) {
    DBusRunningInstance running([] { return QDBusConnection("no such connection"); });
    EXPECT_FALSE(running.request({.verb = "search", .arguments = {}}, [](std::string_view) { return true; }));
}

TEST(RunningInstance, FailsARequestWhoseAnswerNeverComes) {
    TestBus bus;
    std::optional<SingleInstance> instance(std::in_place, bus.connect());
    bool arrived = false;
    instance->setHandler([&arrived](const InstanceRequest&, const auto&) { arrived = true; });
    SecondStart second(bus, {.verb = "search", .arguments = {}});
    ASSERT_TRUE(waitFor([&] { return arrived; }));
    bus.stop();
    const Outcome outcome = second.outcome();
    ASSERT_TRUE(outcome.result);
    EXPECT_EQ(outcome.result->exitCode, 1);
}

} // namespace brimwick
