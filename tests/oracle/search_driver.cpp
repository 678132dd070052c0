// Reads indexes and queries from stdin, and prints which folders each search finds: for the search oracle.
//
// Every number is a 32-bit integer of this machine, every text a length and its bytes. An index is the number
// of its names and the names, then the number of queries and these; the answer to a query is the number of
// folders found and the folders, in order. Called with "assigned", it prints one letter for every code point
// instead: whether the library that folds names knows it (y) or not (n).

#include "model/FolderIndex.h"

#include <utf8proc.h>

#include <cstdint>
#include <cstdio>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace {

using brimwick::FolderIndex;
using brimwick::FolderNumber;
using brimwick::FolderTree;

void readBytes(void* bytes, std::size_t count) {
    if (std::fread(bytes, 1, count, stdin) != count) throw std::runtime_error("the input is cut short");
}

std::uint32_t readNumber() {
    std::uint32_t number = 0;
    readBytes(&number, sizeof number);
    return number;
}

std::string readText() {
    std::string text(readNumber(), '\0');
    readBytes(text.data(), text.size());
    return text;
}

void print(std::uint32_t number) {
    std::fwrite(&number, sizeof number, 1, stdout);
}

/// The names' folder: has no name, so that no search finds it.
FolderIndex readIndex(std::uint32_t names) {
    FolderTree folders;
    const FolderNumber root = folders.addRoot("/nowhere", "");
    for (std::uint32_t i = 0; i < names; ++i) folders.addSubfolder(root, readText());
    return FolderIndex(std::move(folders));
}

void answerQueries() {
    std::uint32_t names = 0;
    while (std::fread(&names, sizeof names, 1, stdin) == 1) {
        const FolderIndex index = readIndex(names);
        for (std::uint32_t queries = readNumber(); queries > 0; --queries) {
            const auto found = index.search(readText());
            print(static_cast<std::uint32_t>(found.size()));
            for (const FolderNumber folder : found) print(folder);
        }
    }
}

void printAssigned() {
    for (utf8proc_int32_t codePoint = 0; codePoint <= 0x10FFFF; ++codePoint)
        std::putchar(utf8proc_category(codePoint) == UTF8PROC_CATEGORY_CN ? 'n' : 'y');
}

} // namespace

int main(int count, char** words) {
    try {
        if (count > 1 && std::string_view(words[1]) == "assigned")
            printAssigned();
        else
            answerQueries();
        return std::fflush(stdout) == 0 ? 0 : 1;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "search_driver: %s\n", error.what());
        return 1;
    }
}
