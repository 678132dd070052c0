// file-action-driver [--home FOLDER] [--then-undo [--then-redo]] move|copy TARGET SOURCE...
// file-action-driver [--home FOLDER] recover
//
// Performs one action from the command line, for sweeps that fail, kill and race every system call, or puts
// right what an earlier one left. What the user would be told goes to stderr. Ends with 0 only when every run
// was answered with yes and left no file out, but for the redo of a copy, which has nothing to copy.

#include "actions/BWAction.h"
#include "actions/Recovery.h"
#include "fakes/FakeMainLoop.h"
#include "fakes/FakeSoundPlayer.h"
#include "model/PathText.h"
#include "model/RealHomeDirectory.h"
#include "model/SupportFolder.h"

#include <getopt.h>

#include <array>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <optional>
#include <span>
#include <string>

namespace brimwick {
namespace {

constexpr int usageError = 2;

class PrintedNotifications : public NotificationService {
  public:
    void deliver(const DesktopNotification& notification) override {
        std::fprintf(stderr, "%s\n", notification.body.c_str());
    }
};

struct Request {
    std::string home;
    bool recover = false;
    bool undo = false;
    bool redo = false;
    Mode type = BWModeMove;
    std::string target;
    std::vector<std::string> sources;
};

std::optional<Request> parse(int count, char** words) {
    static const std::array options = {
        option{"home", required_argument, nullptr, 'h'}, option{"then-undo", no_argument, nullptr, 'u'},
        option{"then-redo", no_argument, nullptr, 'r'}, option{nullptr, 0, nullptr, 0}};
    Request request;
    for (int given = 0; (given = getopt_long(count, words, "", options.data(), nullptr)) != -1;) {
        if (given == 'h')
            request.home = optarg;
        else if (given == 'u')
            request.undo = true;
        else if (given == 'r')
            request.redo = true;
        else
            return std::nullopt;
    }
    const auto rest =
        std::span(words, static_cast<std::size_t>(count)).subspan(static_cast<std::size_t>(optind));
    request.recover = rest.size() == 1 && std::string(rest[0]) == "recover";
    if (request.recover) return request;
    if (rest.size() < 3 || (request.redo && !request.undo)) return std::nullopt;
    const std::string type = rest[0];
    if (type != "move" && type != "copy") return std::nullopt;
    request.type = type == "move" ? BWModeMove : BWModeCopy;
    request.target = rest[1];
    request.sources.assign(rest.begin() + 2, rest.end());
    return request;
}

/// Whether the action answered yes and handled every file.
bool run(BWAction& action, std::int32_t direction) {
    const std::size_t wanted = direction == 0 ? action.sourceFiles().size() : action.targetFiles().size();
    if (!action.performActionInDirection(direction)) return false;
    return (direction == 0 ? action.targetFiles() : action.sourceFiles()).size() == wanted;
}

void recover(FileJournal& journal) {
    for (const std::string& line : recoverInterrupted(journal, {}))
        std::fprintf(stderr, "%s\n", line.c_str());
}

bool fulfil(const Request& request) {
    const std::string home = request.home.empty() ? realHomeDirectory() : request.home;
    std::error_code noJournalThen;
    std::filesystem::create_directories(supportFolder(home), noJournalThen);
    FileJournal journal(fileJournalPath(home));
    if (request.recover) {
        recover(journal);
        return true;
    }
    const std::vector<BWSelectedFileOrFolder> noFolders;
    const PreferencesStore preferences(home, Resources(home), noFolders);
    FakeSoundPlayer silence;
    SoundBox sounds(silence, [] { return 0U; });
    PrintedNotifications printed;
    const FakeMainLoop clock;
    UserNotifications notifications(printed, clock);

    InPlaceWorkRunner workRunner;
    BWAction action({preferences, sounds, {journal, workRunner}, home}, notifications);
    action.setActionType(request.type);
    BWAction::Files files;
    files.reserve(request.sources.size());
    for (const std::string& path : request.sources)
        files.push_back(BWSelectedFileOrFolder::fileOrFolderWithPath(path));
    action.setSourceFiles(std::move(files));
    action.setSourceFolder(BWSelectedFileOrFolder::fileOrFolderWithPath(parentPath(request.sources.front())));
    action.setTargetFolder(BWSelectedFileOrFolder::fileOrFolderWithPath(request.target));

    if (!run(action, 0)) return false;
    if (!request.undo) return true;
    if (!run(action, 1)) return false;
    if (!request.redo) return true;
    return request.type == BWModeCopy ? action.performActionInDirection(0) : run(action, 0);
}

} // namespace
} // namespace brimwick

int main(int count, char** words) {
    try {
        // What it says must not be what it takes its time for.
        std::setvbuf(stderr, nullptr, _IOFBF, BUFSIZ);
        const auto request = brimwick::parse(count, words);
        if (!request) {
            std::fputs(
                "usage: file-action-driver [--home FOLDER] [--then-undo [--then-redo]] move|copy TARGET "
                "SOURCE...\n       file-action-driver [--home FOLDER] recover\n",
                stderr);
            return brimwick::usageError;
        }
        return brimwick::fulfil(*request) ? 0 : 1;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "file-action-driver: %s\n", failure.what());
        return 1;
    }
}
