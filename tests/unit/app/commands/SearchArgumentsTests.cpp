#include "app/commands/SearchArguments.h"

#include <gmock/gmock.h>

namespace brimwick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

SearchArguments parsed(const CommandArguments& arguments) {
    const auto search = parseSearchArguments(arguments);
    EXPECT_TRUE(search) << search.error();
    return search.value_or(SearchArguments{});
}

std::string problem(const CommandArguments& arguments) {
    const auto search = parseSearchArguments(arguments);
    return search ? "none" : search.error();
}

TEST(SearchArguments, AreATextInTheFoldersOfThePreferencesAndLinesUnlessToldOtherwise) {
    const SearchArguments search = parsed({"two words"});
    EXPECT_EQ(search.text, "two words");
    EXPECT_THAT(search.folders, IsEmpty());
    EXPECT_EQ(search.format, SearchFormat::lines);
}

TEST(SearchArguments, TakeSeveralFoldersAfterOneOption) {
    EXPECT_THAT(parsed({"text", "--in", "a", "b", "--json"}).folders, ElementsAre("a", "b"));
    EXPECT_THAT(parsed({"text", "--in", "a", "--in", "b", "--in=c"}).folders, ElementsAre("a", "b", "c"));
}

TEST(SearchArguments, MayStandInAnyOrder) {
    const SearchArguments search = parsed({"-0", "--in", "a", "b", "--", "text"});
    EXPECT_EQ(search.text, "text");
    EXPECT_THAT(search.folders, ElementsAre("a", "b"));
    EXPECT_EQ(search.format, SearchFormat::nulSeparated);
    EXPECT_EQ(parsed({"--in=a", "text"}).text, "text");
}

TEST(SearchArguments, TakeATextThatLooksLikeAnOptionAfterTwoDashes) {
    EXPECT_EQ(parsed({"--", "--json"}).text, "--json");
    EXPECT_EQ(parsed({"-"}).text, "-");
    EXPECT_EQ(parsed({""}).text, "");
}

TEST(SearchArguments, KeepBytesThatAreNoUtf8) {
    EXPECT_EQ(parsed({"\xFF", "--in", "\xFE"}).text, "\xFF");
    EXPECT_THAT(parsed({"\xFF", "--in", "\xFE"}).folders, ElementsAre("\xFE"));
}

TEST(SearchArguments, ChooseTheFormat) {
    EXPECT_EQ(parsed({"text", "--json"}).format, SearchFormat::json);
    EXPECT_EQ(parsed({"text", "-0"}).format, SearchFormat::nulSeparated);
    EXPECT_EQ(parsed({"text", "-0", "-0"}).format, SearchFormat::nulSeparated);
}

TEST(SearchArguments, SayWhatIsWrongWithThem) {
    EXPECT_EQ(problem({}), "the text to search for is missing");
    EXPECT_EQ(problem({"--json"}), "the text to search for is missing");
    EXPECT_EQ(problem({"--in", "a"}), "the text to search for is missing");
    EXPECT_EQ(problem({"two", "words"}), "more than one text; put quotes around what belongs together");
    EXPECT_EQ(problem({"text", "--in"}), "--in needs a folder");
    EXPECT_EQ(problem({"text", "--in", "--json"}), "--in needs a folder");
    EXPECT_EQ(problem({"text", "--in="}), "the name of a folder is empty");
    EXPECT_EQ(problem({"text", "--json", "-0"}), "--json and -0 exclude each other");
    EXPECT_EQ(problem({"text", "--xml"}), "unknown option --xml");
}

} // namespace
} // namespace brimwick
