#include "app/commands/CommandLine.h"

#include "app/commands/SearchCommand.h"

#include <algorithm>
#include <array>

namespace brimwick {

namespace {

constexpr std::array commands = {searchCommand};

/// Options of the window toolkit, each with a value. A session manager passes the first one.
constexpr std::array<std::string_view, 5> toolkitOptions = {"-session", "-platform", "-style", "-stylesheet",
                                                            "-display"};

std::string synopsis(const Command& command) {
    return "brimwick " + std::string(command.verb) + " " + std::string(command.usage);
}

std::string help() {
    std::string text = "Usage: brimwick                start Brimwick; its icon is in the tray\n";
    for (const Command& command : commands)
        text += "       " + synopsis(command) + "\n           " + std::string(command.summary) + "\n";
    text +=
        "       brimwick --help | --version\n"
        "\n"
        "Ends with 0 when it was done, 1 when not (the reason is on stderr; nothing found is one), 2 when\n"
        "the arguments are wrong, 3 when Brimwick would have to run and does not.\n";
    return text;
}

} // namespace

bool startsTheProgram(const CommandArguments& arguments) {
    std::size_t next = 0;
    while (next < arguments.size() && std::ranges::count(toolkitOptions, arguments[next]) > 0) next += 2;
    return next >= arguments.size();
}

int misused(const Command& command, const std::string& problem, const CommandSurroundings& surroundings) {
    surroundings.complain("brimwick " + std::string(command.verb) + ": " + problem);
    surroundings.complain("Usage: " + synopsis(command));
    return ExitCode::usage;
}

int runCommandLine(const CommandArguments& arguments, const CommandSurroundings& surroundings) {
    const std::string first = arguments.empty() ? std::string() : arguments.front();
    if (first == "--help" || first == "-h")
        return surroundings.output(help()) ? ExitCode::done : ExitCode::failed;
    if (first == "--version")
        return surroundings.output("brimwick " + surroundings.version + "\n") ? ExitCode::done
                                                                              : ExitCode::failed;
    const auto* const command = std::ranges::find(commands, first, &Command::verb);
    if (command == commands.end()) {
        surroundings.complain("brimwick: there is no command \"" + first + "\"; see brimwick --help");
        return ExitCode::usage;
    }
    const CommandArguments rest(arguments.begin() + 1, arguments.end());
    if (rest == CommandArguments{"--help"} || rest == CommandArguments{"-h"})
        return surroundings.output("Usage: " + synopsis(*command) + "\n" + std::string(command->summary) +
                                   "\n")
                   ? ExitCode::done
                   : ExitCode::failed;
    return command->run(rest, surroundings);
}

} // namespace brimwick
