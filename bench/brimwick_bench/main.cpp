// brimwick-bench walk DIR, brimwick-bench search DIR --queries FILE: what the index costs, as JSON lines.

#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "MeasuredIndex.h"
#include "SearchReport.h"

namespace brimwick {
namespace {

constexpr int failed = 1;
constexpr int wrongUsage = 2;

int complainOfUsage(const std::string& problem) {
    std::fprintf(stderr,
                 "brimwick-bench: %s\n"
                 "usage: brimwick-bench walk DIR\n"
                 "       brimwick-bench search DIR --queries FILE\n",
                 problem.c_str());
    return wrongUsage;
}

/// One query a line.
std::optional<std::vector<std::string>> readQueries(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::vector<std::string> queries;
    for (std::string line; std::getline(file, line);) queries.push_back(line);
    if (!file.eof() || queries.empty()) return std::nullopt;
    return queries;
}

int walk(const std::string& folder) {
    const MeasuredIndex measured = measureIndexOf(folder);
    std::printf("{\"folders\": %zu, \"seconds\": %.6f, \"cpu_seconds\": %.6f, \"peak_bytes\": %llu, "
                "\"bytes_per_folder\": %.2f, \"name_bytes\": %zu}\n",
                measured.index->size(), measured.seconds, measured.processorSeconds,
                static_cast<unsigned long long>(measured.peakBytes), measured.bytesPerFolder(),
                measured.nameBytes());
    return 0;
}

int run(std::span<const std::string_view> arguments) {
    if (arguments.empty()) return complainOfUsage("what to measure is missing");
    const std::string_view verb = arguments[0];
    const bool wellFormed = verb == "walk"     ? arguments.size() == 2
                            : verb == "search" ? arguments.size() == 4 && arguments[2] == "--queries"
                                               : false;
    if (verb != "walk" && verb != "search")
        return complainOfUsage("there is nothing to measure called " + std::string(verb));
    if (!wellFormed) return complainOfUsage(std::string(verb) + " takes other arguments");

    std::error_code error;
    const std::string folder = std::filesystem::absolute(arguments[1], error);
    if (!std::filesystem::is_directory(folder, error)) return complainOfUsage(folder + " is no folder");
    if (verb == "walk") return walk(folder);

    const auto queries = readQueries(std::string(arguments[3]));
    if (!queries) return complainOfUsage("no queries can be read from " + std::string(arguments[3]));
    printSearchReport(*measureIndexOf(folder).index, *queries);
    return 0;
}

} // namespace
} // namespace brimwick

int main(int count, char** words) {
    try {
        const std::vector<std::string_view> arguments(words + 1, words + count);
        const int result = brimwick::run(arguments);
        return std::fflush(stdout) == 0 ? result : brimwick::failed;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "brimwick-bench: %s\n", error.what());
        return brimwick::failed;
    }
}
