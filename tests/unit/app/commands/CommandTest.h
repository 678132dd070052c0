#pragma once

#include "app/commands/CommandLine.h"
#include "fakes/FakeRunningInstance.h"
#include "fakes/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace brimwick {

/// The command line, with a home of its own.
class CommandTest : public testing::Test {
  protected:
    int run(const CommandArguments& arguments) {
        return runCommandLine(arguments,
                              {.running = running,
                               .output =
                                   [this](std::string_view bytes) {
                                       printed += bytes;
                                       return true;
                                   },
                               .complain = [this](const std::string& line) { complaints.push_back(line); },
                               .outputIsTerminal = isTerminal,
                               .homeDirectory = [this] { return home.path(); },
                               .resourceDirectory = BRIMWICK_RESOURCES,
                               .version = "1.2.3"});
    }

    TemporaryFolder home;
    FakeRunningInstance running;
    bool isTerminal = false;
    std::string printed;
    std::vector<std::string> complaints;
};

} // namespace brimwick
