#include "fakes/FakeMainLoop.h"
#include "hotkeys/HotKeyErrorMessage.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

namespace brimwick {

namespace {

using std::chrono::milliseconds;

class RecordingLabel : public HotKeyErrorLabel {
  public:
    void showMessage(const std::string& message) override {
        text = message;
        hidden = false;
    }
    void setAlpha(double alpha) override { alphas.push_back(alpha); }
    void hideMessage() override { hidden = true; }

    std::string text;
    bool hidden = true;
    std::vector<double> alphas;
};

class HotKeyErrorMessageTest : public testing::Test {
  protected:
    FakeMainLoop mainLoop;
    RecordingLabel label;
    HotKeyErrorMessage message{mainLoop, label};
};

} // namespace

TEST_F(HotKeyErrorMessageTest, FadesByAHundredthATickAndIsHiddenAtTheHundredAndFirst) {
    message.show("Not allowed");
    EXPECT_FALSE(label.hidden);
    EXPECT_EQ(label.text, "Not allowed");
    EXPECT_TRUE(label.alphas.empty()) << "the colour stays as it is until the first tick";

    mainLoop.pass(milliseconds(49));
    EXPECT_TRUE(label.alphas.empty());
    mainLoop.pass(milliseconds(1));
    EXPECT_THAT(label.alphas, testing::ElementsAre(1.0));
    mainLoop.pass(milliseconds(99 * 50));
    ASSERT_EQ(label.alphas.size(), 100U);
    for (std::size_t tick = 0; tick < 100; ++tick)
        EXPECT_DOUBLE_EQ(label.alphas[tick], static_cast<double>(100 - tick) / 100) << tick;
    EXPECT_FALSE(label.hidden);
    mainLoop.pass(milliseconds(49));
    EXPECT_FALSE(label.hidden);
    mainLoop.pass(milliseconds(1));
    EXPECT_TRUE(label.hidden);
    EXPECT_EQ(label.alphas.size(), 100U);
    EXPECT_EQ(mainLoop.timerCount(), 0U);
}

TEST_F(HotKeyErrorMessageTest, StartsTheFadeAnewWithTheNextMessage) {
    message.show("Not allowed");
    mainLoop.pass(milliseconds(3000));
    EXPECT_DOUBLE_EQ(label.alphas.back(), 0.41);
    message.show("Can't register");
    EXPECT_EQ(mainLoop.timerCount(), 1U);
    mainLoop.pass(milliseconds(50));
    EXPECT_DOUBLE_EQ(label.alphas.back(), 1.0);
    EXPECT_EQ(label.text, "Can't register");
    mainLoop.pass(milliseconds(99 * 50));
    EXPECT_FALSE(label.hidden);
    mainLoop.pass(milliseconds(50));
    EXPECT_TRUE(label.hidden);
}

TEST_F(HotKeyErrorMessageTest, RunsNoTimerWithoutAMessage) {
    EXPECT_EQ(mainLoop.timerCount(), 0U);
}

} // namespace brimwick
