#include "platform/linux/process/QuitSignals.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <csignal>

namespace brimwick {

namespace {

constexpr std::array quitting = {SIGTERM, SIGINT, SIGHUP};

/// A signal handler can reach nothing but what stands still: the two ends of a pipe.
std::array<int, 2> signalPipe = {-1, -1};

void writeToPipe(int /*signal*/) {
    const char byte = 0;
    [[maybe_unused]] const ssize_t ignored = write(signalPipe[1], &byte, 1);
}

void handleWith(void (*handler)(int)) {
    struct sigaction action {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    for (const int signal : quitting) sigaction(signal, &action, nullptr);
}

} // namespace

QuitSignals::QuitSignals(std::function<void()> quit) {
    if (pipe2(signalPipe.data(), O_CLOEXEC | O_NONBLOCK) != 0) return;
    readable_.emplace(signalPipe[0], QSocketNotifier::Read);
    QObject::connect(&*readable_, &QSocketNotifier::activated, &*readable_, [this, quit = std::move(quit)] {
        readable_->setEnabled(false);
        quit();
    });
    handleWith(writeToPipe);
}

QuitSignals::~QuitSignals() {
    if (!readable_) return;
    handleWith(SIG_DFL);
    readable_.reset();
    close(signalPipe[0]);
    close(signalPipe[1]);
}

} // namespace brimwick
