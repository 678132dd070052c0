#include "actions/RecoveryThread.h"

#include "actions/Recovery.h"
#include "platform/ports/ThreadPriority.h"

#include <exception>

namespace brimwick {

namespace {

std::string joined(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) text += (text.empty() ? "" : "\n") + line;
    return text;
}

std::string recover(FileJournal& journal, const std::stop_token& stop) {
    try {
        return joined(recoverInterrupted(journal, stop));
    } catch (const std::exception& failure) {
        return std::string("Could not clean up after the last run: ") + failure.what();
    }
}

} // namespace

RecoveryThread::RecoveryThread(FileJournal& journal, MainLoop& mainLoop, UserNotifications& notifications) {
    if (journal.interrupted().empty()) return;
    thread_ = std::jthread([&journal, &mainLoop, &notifications](const std::stop_token& stop) {
        lowerThreadPriority();
        const std::string text = recover(journal, stop);
        if (!text.empty())
            mainLoop.post([&notifications, text] { notifications.sendUserNotification(text); });
    });
}

} // namespace brimwick
