#include "app/commands/Command.h"

namespace brimwick {

std::string synopsis(const Command& command) {
    return "brimwick " + std::string(command.verb) + " " + std::string(command.usage);
}

int misused(const Command& command, const std::string& problem, const CommandSurroundings& surroundings) {
    surroundings.complain("brimwick " + std::string(command.verb) + ": " + problem);
    surroundings.complain("Usage: " + synopsis(command));
    return ExitCode::usage;
}

} // namespace brimwick
