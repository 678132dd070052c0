#include "app/RestrictedLoop.h"

#include "app/ActionProgressWindow.h"
#include "app/BWApplication.h"
#include "picker/DisplayText.h"

#include <QEventLoop>
#include <QScopeGuard>
#include <QScopedValueRollback>
#include <QTimer>

#include <future>
#include <memory>
#include <stdexcept>

namespace brimwick {

namespace {

using namespace std::chrono_literals;

/// Most work is done before anybody could have done anything else.
constexpr auto waitsAtFirst = 50ms;
constexpr auto showsAfter = 500ms;
constexpr auto looksEvery = 20ms;

} // namespace

void RestrictedLoop::run(const FileWork& work) {
    // An assistive technology, say, can press a button of a window that takes no input.
    if (isAtWork_) throw std::logic_error("an action is under way already");
    const QScopedValueRollback<bool> atWork(isAtWork_, true);
    QElapsedTimer begun;
    begun.start();
    std::future<void> done = std::async(std::launch::async, work.perform);
    const auto isDone = [&done] { return done.wait_for(0s) == std::future_status::ready; };
    if (done.wait_for(waitsAtFirst) != std::future_status::ready) serveWindows(work, begun, isDone);
    done.wait();
    work.report();
    done.get();
}

void RestrictedLoop::serveWindows(const FileWork& work, QElapsedTimer begun,
                                  const std::function<bool()>& isDone) {
    auto& application = *static_cast<BWApplication*>(QCoreApplication::instance());
    mainLoop_.setHeld(true);
    application.restrictInputTo(nullptr);
    const auto lift = qScopeGuard([&] {
        application.liftRestriction();
        mainLoop_.setHeld(false);
    });

    std::unique_ptr<ActionProgressWindow> window;
    QEventLoop loop;
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, &loop, [&] {
        if (isDone()) return loop.quit();
        work.report();
        if (window) return window->refresh();
        if (begun.elapsed() < std::chrono::milliseconds(showsAfter).count()) return;
        window = std::make_unique<ActionProgressWindow>(displayText(work.title), work.progress, begun);
        application.restrictInputTo(window.get());
        // Only from ourselves: whoever types in another program does not mean this window.
        window->setAttribute(Qt::WA_ShowWithoutActivating,
                             QGuiApplication::applicationState() != Qt::ApplicationActive);
        window->show();
    });
    look.start(looksEvery);
    loop.exec();
    // The program itself may be told to end; files are not left half done then either.
    if (!isDone()) work.progress.cancel();
}

} // namespace brimwick
