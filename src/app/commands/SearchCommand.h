#pragma once

#include "app/commands/Command.h"

namespace brimwick {

/// "brimwick search": the folders whose name contains a text, found as the picker finds them. In the folders
/// of the preferences, by the program that runs or, when none does, by a walk of its own; or in given ones.
int runSearch(const CommandArguments& arguments, const CommandSurroundings& surroundings);

inline constexpr Command searchCommand = {
    .verb = "search",
    .usage = "TEXT [--in FOLDER...] [--json|-0]",
    .summary = "print the folders whose name contains TEXT, as the picker lists them",
    .run = runSearch,
};

} // namespace brimwick
