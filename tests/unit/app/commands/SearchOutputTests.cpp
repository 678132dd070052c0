#include "app/commands/SearchOutput.h"

#include <gtest/gtest.h>

namespace brimwick {
namespace {

FolderIndex indexOf(const std::vector<std::string>& names) {
    FolderTree folders;
    const FolderNumber root = folders.addRoot("/r", "r");
    for (const std::string& name : names) folders.addSubfolder(root, name);
    return FolderIndex(std::move(folders));
}

/// The folders but for the root, written down.
std::string written(const std::vector<std::string>& names, SearchFormat format) {
    std::vector<FolderNumber> folders;
    for (std::size_t folder = 1; folder <= names.size(); ++folder)
        folders.push_back(static_cast<FolderNumber>(folder));
    std::string text;
    EXPECT_TRUE(writeSearchResults(indexOf(names), folders, format, [&text](std::string_view bytes) {
        text += bytes;
        return true;
    }));
    return text;
}

TEST(SearchOutput, IsOnePathALineWithItsBytesAsTheyAre) {
    EXPECT_EQ(written({"a b", "c\x1B\xFF", "d\ne"}, SearchFormat::lines), "/r/a b\n/r/c\x1B\xFF\n/r/d\ne\n");
    EXPECT_EQ(written({}, SearchFormat::lines), "");
}

TEST(SearchOutput, SparesATerminalControlCharacters) {
    EXPECT_EQ(written({"a\x1B[31m", "b\nc", "d\x7F", "e\u009B", "\u00e9\xC2"}, SearchFormat::terminal),
              "/r/a?[31m\n/r/b?c\n/r/d?\n/r/e?\n/r/\u00e9\xC2\n");
}

TEST(SearchOutput, ClosesEachPathWithANul) {
    EXPECT_EQ(written({"a", "b\nc"}, SearchFormat::nulSeparated), std::string("/r/a\0/r/b\nc\0", 12));
    EXPECT_EQ(written({}, SearchFormat::nulSeparated), "");
}

TEST(SearchOutput, IsOneJsonArrayWithAnObjectALine) {
    EXPECT_EQ(written({"\u00e9", "q\"\\\n\x01"}, SearchFormat::json),
              "[\n"
              "{\"name\": \"\u00e9\", \"path\": \"/r/\u00e9\"},\n"
              R"({"name": "q\"\\\u000a\u0001", "path": "/r/q\"\\\u000a\u0001"})"
              "\n]\n");
    EXPECT_EQ(written({}, SearchFormat::json), "[]\n");
}

TEST(SearchOutput, GivesTheBytesOfAPathThatIsNoUtf8) {
    EXPECT_EQ(written({"a\xFF"}, SearchFormat::json),
              "[\n{\"name\": \"a\uFFFD\", \"path\": \"/r/a\uFFFD\", \"path_bytes\": \"L3IvYf8=\"}\n]\n");
}

TEST(SearchOutput, GivesTheBytesOfAPathWhoseFolderAloneIsNoUtf8) {
    FolderTree folders;
    const FolderNumber root = folders.addRoot("/\xFF", "\xFF");
    folders.addSubfolder(root, "ab");
    std::string text;
    writeSearchResults(FolderIndex(std::move(folders)), {1}, SearchFormat::json,
                       [&text](std::string_view bytes) {
                           text += bytes;
                           return true;
                       });
    EXPECT_EQ(text, "[\n{\"name\": \"ab\", \"path\": \"/\uFFFD/ab\", \"path_bytes\": \"L/8vYWI=\"}\n]\n");
}

TEST(SearchOutput, StopsWhenNobodyReadsOn) {
    const std::vector<std::string> names(3, std::string(60'000, 'x'));
    int portions = 0;
    EXPECT_FALSE(writeSearchResults(indexOf(names), {1, 2, 3}, SearchFormat::lines,
                                    [&portions](std::string_view) { return ++portions < 1; }));
    EXPECT_EQ(portions, 1);
}

} // namespace
} // namespace brimwick
