#include <gmock/gmock.h>

#include "unit/app/commands/CommandTest.h"

namespace brimwick {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

using CommandLineTest = CommandTest;

TEST(CommandLine, StartsTheProgramWithoutArgumentsOrWithThoseOfADesktop) {
    EXPECT_TRUE(startsTheProgram({}));
    EXPECT_TRUE(startsTheProgram({"-session", "10a_17_1"}));
    EXPECT_TRUE(startsTheProgram({"-platform", "offscreen", "-style", "fusion"}));
    EXPECT_FALSE(startsTheProgram({"search", "text"}));
    EXPECT_FALSE(startsTheProgram({"--help"}));
    EXPECT_FALSE(startsTheProgram({"-session", "10a_17_1", "search"}));
    EXPECT_FALSE(startsTheProgram({""}));
}

TEST_F(CommandLineTest, PrintsHelp) {
    EXPECT_EQ(run({"--help"}), ExitCode::done);
    EXPECT_THAT(printed, StartsWith("Usage: brimwick"));
    EXPECT_THAT(printed, HasSubstr("brimwick search TEXT [--in FOLDER...] [--json|-0]\n"));
    EXPECT_THAT(complaints, IsEmpty());
}

TEST_F(CommandLineTest, PrintsItsVersion) {
    EXPECT_EQ(run({"--version"}), ExitCode::done);
    EXPECT_EQ(printed, "brimwick 1.2.3\n");
}

TEST_F(CommandLineTest, PrintsTheHelpOfAVerb) {
    EXPECT_EQ(run({"search", "--help"}), ExitCode::done);
    EXPECT_THAT(printed, StartsWith("Usage: brimwick search TEXT [--in FOLDER...] [--json|-0]\n"));
    EXPECT_THAT(running.requests, IsEmpty());
}

TEST_F(CommandLineTest, SaysThatItDoesNotKnowAVerb) {
    EXPECT_EQ(run({"fly"}), ExitCode::usage);
    EXPECT_THAT(complaints, ElementsAre("brimwick: there is no command \"fly\"; see brimwick --help"));
    EXPECT_EQ(run({"--fly"}), ExitCode::usage);
    EXPECT_EQ(printed, "");
}

TEST_F(CommandLineTest, SaysHowAVerbIsUsed) {
    EXPECT_EQ(run({"search", "a", "b"}), ExitCode::usage);
    EXPECT_THAT(complaints,
                ElementsAre("brimwick search: more than one text; put quotes around what belongs together",
                            "Usage: brimwick search TEXT [--in FOLDER...] [--json|-0]"));
    EXPECT_EQ(printed, "");
}

} // namespace
} // namespace brimwick
