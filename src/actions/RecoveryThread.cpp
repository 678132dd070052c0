#include "actions/RecoveryThread.h"

#include "actions/Recovery.h"
#include "platform/ports/ThreadPriority.h"

#include <system_error>

namespace brimwick {

namespace {

std::string joined(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) text += (text.empty() ? "" : "\n") + line;
    return text;
}

} // namespace

RecoveryThread::RecoveryThread(FileJournal& journal, MainLoop& mainLoop, UserNotifications& notifications) {
    if (journal.interrupted().empty()) return;
    try {
        thread_ = std::jthread([&journal, &mainLoop, &notifications](const std::stop_token& stop) {
            lowerThreadPriority();
            const std::string text = joined(recoverInterrupted(journal, stop));
            if (!text.empty())
                mainLoop.post([&notifications, text] { notifications.sendUserNotification(text); });
        });
    } catch (const std::system_error&) {
        // Too many threads already: the next start has another try.
    }
}

} // namespace brimwick
