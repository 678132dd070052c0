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

std::string help() {
    std::string text = "Usage: brimwick                start Brimwick; its icon is in the tray\n";
    for (const Command& command : commands)
        text += "       " + synopsis(command) + "\n           " + std::string(command.summary) + "\n";
    text +=
        "       brimwick --help | --version\n"
        "\n"
        "Ends with 0 when it was done, 1 when not (the reason is on stderr; nothing found is one), 2 when\n"
        "the arguments are wrong.\n";
    return text;
}

int print(const std::string& text, const CommandSurroundings& surroundings) {
    return surroundings.output(text) ? ExitCode::done : ExitCode::failed;
}

} // namespace

bool startsTheProgram(const CommandArguments& arguments) {
    std::size_t next = 0;
    while (next < arguments.size() && std::ranges::count(toolkitOptions, arguments[next]) > 0) next += 2;
    return next >= arguments.size();
}

int runCommandLine(const CommandArguments& arguments, const CommandSurroundings& surroundings) {
    const std::string first = arguments.empty() ? std::string() : arguments.front();
    if (first == "--help" || first == "-h") return print(help(), surroundings);
    if (first == "--version") return print("brimwick " + surroundings.version + "\n", surroundings);
    const auto* const command = std::ranges::find(commands, first, &Command::verb);
    if (command == commands.end()) {
        surroundings.complain("brimwick: there is no command \"" + first + "\"; see brimwick --help");
        return ExitCode::usage;
    }
    const CommandArguments rest(arguments.begin() + 1, arguments.end());
    if (rest == CommandArguments{"--help"} || rest == CommandArguments{"-h"})
        return print("Usage: " + synopsis(*command) + "\n" + std::string(command->summary) + "\n",
                     surroundings);
    return command->run(rest, surroundings);
}

} // namespace brimwick
