#pragma once

#include "app/commands/Command.h"

namespace brimwick {

/// Whether the program, with its windows, is to be started: there is no argument, or only such as desktops
/// give to every program of its kind.
bool startsTheProgram(const CommandArguments& arguments);

/// Does what the arguments ask, without any display; yields the exit code.
int runCommandLine(const CommandArguments& arguments, const CommandSurroundings& surroundings);

} // namespace brimwick
