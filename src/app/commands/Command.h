#pragma once

#include "app/commands/ExitCode.h"
#include "platform/ports/RunningInstance.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace brimwick {

/// What a command works with.
struct CommandSurroundings {
    RunningInstance& running;
    ByteSink output;
    /// Takes one line without its end.
    std::function<void(const std::string&)> complain;
    /// Whether the output is read by a terminal, which obeys control characters.
    bool outputIsTerminal = false;
    /// The user's home folder and the files that ship; asked only by the commands that need them.
    std::function<std::string()> homeDirectory;
    std::string resourceDirectory;
    std::string version;
};

/// The arguments of a verb, the verb itself left out.
using CommandArguments = std::vector<std::string>;

/// A verb of the command line.
struct Command {
    std::string_view verb;
    /// What follows the verb, and what it does.
    std::string_view usage;
    std::string_view summary;
    /// Yields the exit code.
    int (*run)(const CommandArguments& arguments, const CommandSurroundings& surroundings);
};

/// How the command is called.
std::string synopsis(const Command& command);

/// Says what is wrong and how the verb is used; yields the exit code.
int misused(const Command& command, const std::string& problem, const CommandSurroundings& surroundings);

} // namespace brimwick
