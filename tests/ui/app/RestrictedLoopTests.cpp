#include "app/ActionProgressWindow.h"
#include "app/BWApplication.h"
#include "app/RestrictedLoop.h"

#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <gmock/gmock.h>

#include <stdexcept>
#include <thread>

namespace brimwick {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using namespace std::chrono_literals;

ActionProgressWindow* progressWindow() {
    for (QWidget* widget : QApplication::topLevelWidgets())
        if (auto* window = dynamic_cast<ActionProgressWindow*>(widget)) return window;
    return nullptr;
}

class RestrictedLoopTest : public testing::Test {
  protected:
    FileWork workOf(std::function<void()> perform) {
        return {"Copying to Letters", std::move(perform),
                [this] { reports.push_back(std::this_thread::get_id()); }, progress};
    }
    /// Runs work that goes on until it is ended or cancelled; `meanwhile` is called once its window is there.
    void runUntilEnded(const std::function<void()>& meanwhile) {
        QTimer look;
        QObject::connect(&look, &QTimer::timeout, [&] {
            if (progressWindow() == nullptr || windowWasThere) return;
            windowWasThere = true;
            meanwhile();
        });
        look.start(5);
        loop.run(workOf([this] {
            while (!ended && !progress.checkCancelled()) std::this_thread::sleep_for(1ms);
        }));
    }

    QtMainLoop mainLoop;
    RestrictedLoop loop{mainLoop};
    TransferProgress progress;
    std::vector<std::thread::id> reports;
    std::atomic<bool> ended = false;
    bool windowWasThere = false;
};

TEST_F(RestrictedLoopTest, DoesTheWorkElsewhereAndReportsHere) {
    std::thread::id worker;
    loop.run(workOf([&] { worker = std::this_thread::get_id(); }));
    EXPECT_NE(worker, std::thread::id());
    EXPECT_NE(worker, std::this_thread::get_id());
    EXPECT_THAT(reports, ElementsAre(std::this_thread::get_id()));
    EXPECT_FALSE(mainLoop.isHeld());
}

TEST_F(RestrictedLoopTest, PassesOnWhatTheWorkThrows) {
    for (const auto duration : {0ms, 100ms}) {
        EXPECT_THROW(loop.run(workOf([duration] {
            std::this_thread::sleep_for(duration);
            throw std::runtime_error("full");
        })),
                     std::runtime_error);
        EXPECT_FALSE(mainLoop.isHeld());
    }
}

TEST_F(RestrictedLoopTest, ShowsNoWindowForWorkOfAMoment) {
    QTimer look;
    bool shown = false;
    QObject::connect(&look, &QTimer::timeout, [&] { shown = shown || progressWindow() != nullptr; });
    look.start(1);
    loop.run(workOf([] { std::this_thread::sleep_for(150ms); }));
    EXPECT_FALSE(shown);
    EXPECT_GT(reports.size(), 1U) << "what was done meanwhile is told meanwhile";
}

TEST_F(RestrictedLoopTest, ShowsHowFarLongWorkIs) {
    progress.setItem("letter.txt");
    progress.setTotalBytes(4000);
    progress.addBytes(1000);
    runUntilEnded([&] {
        progressWindow()->refresh();
        EXPECT_EQ(progressWindow()->windowTitle(), "Copying to Letters");
        QStringList texts;
        for (const QLabel* label : progressWindow()->findChildren<QLabel*>()) texts += label->text();
        EXPECT_TRUE(texts.contains("letter.txt"));
        EXPECT_TRUE(texts.filter("1.0 kB of 4.0 kB").size() == 1) << texts.join("|").toStdString();
        EXPECT_EQ(progressWindow()->findChild<QProgressBar*>()->value(), 250);
        ended = true;
    });
    EXPECT_TRUE(windowWasThere);
    EXPECT_EQ(progressWindow(), nullptr) << "it goes with the work";
    EXPECT_FALSE(progress.checkCancelled());
}

TEST_F(RestrictedLoopTest, IsCancelledByItsButtonByEscapeAndByClosing) {
    const std::vector<std::function<void()>> ways = {
        [] { QTest::mouseClick(&progressWindow()->cancelButton(), Qt::LeftButton); },
        [] { QTest::keyClick(progressWindow()->windowHandle(), Qt::Key_Escape); },
        [] { progressWindow()->close(); },
    };
    for (std::size_t way = 0; way < ways.size(); ++way) {
        TransferProgress fresh;
        bool asked = false;
        QTimer look;
        QObject::connect(&look, &QTimer::timeout, [&] {
            if (progressWindow() == nullptr || asked) return;
            asked = true;
            ways[way]();
        });
        look.start(5);
        const auto begin = std::chrono::steady_clock::now();
        loop.run({"Copying",
                  [&] {
                      // Ten seconds at the most.
                      while (!fresh.checkCancelled() && std::chrono::steady_clock::now() - begin < 10s)
                          std::this_thread::sleep_for(1ms);
                  },
                  [] {}, fresh});
        EXPECT_TRUE(fresh.checkCancelled()) << way;
    }
}

TEST_F(RestrictedLoopTest, KeepsInputFromOtherWindowsAndPaintsThem) {
    QLineEdit other;
    other.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&other));
    struct PaintCounter : QObject {
        bool eventFilter(QObject*, QEvent* event) override {
            painted += event->type() == QEvent::Paint ? 1 : 0;
            return false;
        }
        int painted = 0;
    } paints;
    other.installEventFilter(&paints);
    runUntilEnded([&] {
        QTest::keyClick(other.windowHandle(), Qt::Key_A);
        QTest::keyClick(&other, Qt::Key_A);
        QTest::mouseClick(other.windowHandle(), Qt::RightButton);
        EXPECT_FALSE(other.close());
        paints.painted = 0;
        other.update();
        QTimer::singleShot(200ms, [&] { ended = true; });
    });
    EXPECT_EQ(other.text(), "");
    EXPECT_TRUE(other.isVisible());
    EXPECT_GT(paints.painted, 0);
    QTest::keyClick(other.windowHandle(), Qt::Key_A);
    EXPECT_EQ(other.text(), "a");
}

TEST_F(RestrictedLoopTest, TasksAndTimersWaitAndThenComeInTheirOrder) {
    std::vector<int> ran;
    mainLoop.post([&] { ran.push_back(1); });
    const auto timer = mainLoop.repeatEvery(1ms, [&] {
        if (ran.empty()) ran.push_back(-1);
    });
    runUntilEnded([&] {
        mainLoop.post([&] { ran.push_back(2); });
        mainLoop.runWhenFree([&] { ran.push_back(3); });
        QTimer::singleShot(100ms, [&] { ended = true; });
    });
    EXPECT_THAT(ran, IsEmpty());
    mainLoop.runWhenFree([&] { ran.push_back(0); });
    mainLoop.post([&] { ran.push_back(4); });
    EXPECT_TRUE(QTest::qWaitFor([&] { return ran.size() == 5; }, 5000));
    EXPECT_THAT(ran, ElementsAre(0, 1, 2, 3, 4));
}

TEST_F(RestrictedLoopTest, IsNotCancelledByKeysThatWereMeantForTheWindowBefore) {
    runUntilEnded([&] {
        QWindow* window = progressWindow()->windowHandle();
        for (const auto key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space, Qt::Key_A})
            QTest::keyClick(window, key);
        QKeyEvent held(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier, QString(), true);
        QApplication::sendEvent(progressWindow(), &held);
        ended = true;
    });
    EXPECT_TRUE(windowWasThere);
    EXPECT_FALSE(progress.checkCancelled());
}

TEST_F(RestrictedLoopTest, RefusesWorkInTheMidstOfWork) {
    runUntilEnded([&] {
        EXPECT_THROW(loop.run(workOf([] {})), std::logic_error);
        EXPECT_TRUE(mainLoop.isHeld());
        ended = true;
    });
    EXPECT_TRUE(windowWasThere);
    EXPECT_NO_THROW(loop.run(workOf([] {})));
}

TEST_F(RestrictedLoopTest, CancelsTheWorkWhenTheProgramEnds) {
    QTimer::singleShot(0, [this] { runUntilEnded([] { BWApplication::terminate(); }); });
    BWApplication::exec();
    EXPECT_TRUE(progress.checkCancelled());
    EXPECT_FALSE(mainLoop.isHeld());
}

} // namespace

} // namespace brimwick
