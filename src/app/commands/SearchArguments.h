#pragma once

#include "app/commands/Command.h"
#include "app/commands/SearchOutput.h"

#include <tl/expected.hpp>

#include <string>
#include <vector>

namespace brimwick {

/// What "brimwick search" is asked for.
struct SearchArguments {
    std::string text;
    /// As they were given; empty for the folders of the preferences.
    std::vector<std::string> folders;
    SearchFormat format = SearchFormat::lines;
};

/// Reads "TEXT [--in FOLDER...] [--json|-0]"; options may stand anywhere, "--in" takes the arguments up to
/// the next option and may be repeated, and after "--" nothing is an option. The error says what is wrong.
tl::expected<SearchArguments, std::string> parseSearchArguments(const CommandArguments& arguments);

} // namespace brimwick
