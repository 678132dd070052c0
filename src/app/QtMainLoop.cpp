#include "app/QtMainLoop.h"

#include <QMetaObject>
#include <QScopeGuard>
#include <QTimer>

namespace brimwick {

namespace {

class QtRepeatingTimer : public RepeatingTimer {
  public:
    /// The parent deletes the timer at the latest, should no loop run any more that does.
    QtRepeatingTimer(QObject& parent, std::chrono::milliseconds interval, std::function<void()> tick)
        : timer_(new QTimer(&parent)) {
        timer_->setTimerType(Qt::PreciseTimer);
        // The function lives in the connection, and so as long as the timer that calls it.
        QObject::connect(timer_.get(), &QTimer::timeout, timer_.get(), std::move(tick));
        timer_->start(interval);
    }
    ~QtRepeatingTimer() override { timer_->stop(); }

  private:
    struct DeleteLater {
        void operator()(QTimer* timer) const { timer->deleteLater(); }
    };
    std::unique_ptr<QTimer, DeleteLater> timer_;
};

} // namespace

void QtMainLoop::post(std::function<void()> task) {
    QMetaObject::invokeMethod(
        &receiver_, [this, task = std::move(task)] { run(task); }, Qt::QueuedConnection);
}

void QtMainLoop::run(std::function<void()> task) {
    waiting_.push_back(std::move(task));
    // One that fails does not keep the others from running.
    const auto goOn = qScopeGuard([this] {
        if (!waiting_.empty() && !held_) post([] {});
    });
    while (!waiting_.empty() && !held_) {
        const std::function<void()> next = std::move(waiting_.front());
        waiting_.pop_front();
        next();
    }
}

void QtMainLoop::setHeld(bool held) {
    held_ = held;
    // Not from here: who lets them come is in the midst of something still.
    if (!held) post([] {});
}

std::unique_ptr<RepeatingTimer> QtMainLoop::repeatEvery(std::chrono::milliseconds interval,
                                                        std::function<void()> tick) {
    return std::make_unique<QtRepeatingTimer>(receiver_, interval, [this, tick = std::move(tick)] {
        if (!held_) tick();
    });
}

} // namespace brimwick
