#include "SearchReport.h"

#include "app/commands/JsonText.h"

#include <cstdio>

#include "CountingPass.h"
#include "Stopwatch.h"

namespace brimwick {
namespace {

constexpr int repeats = 300;
constexpr int warmUps = 3;

} // namespace

void printSearchReport(const FolderIndex& index, const std::vector<std::string>& queries) {
    const std::string_view names = index.searchedBytes();
    std::vector<Stopwatch> watches(queries.size());
    std::vector<std::size_t> hits(queries.size());
    // As the picker does, which keeps the room of the search before.
    std::vector<FolderNumber> found;
    Stopwatch countingWatch;
    // The queries take turns, so that a moment in which the machine is slow meets all of them alike.
    for (int repeat = -warmUps; repeat < repeats; ++repeat) {
        if (repeat == 0) {
            countingWatch = {};
            watches.assign(queries.size(), {});
        }
        countingWatch.time([&] { return countBytes(names, 'e'); });
        for (std::size_t query = 0; query < queries.size(); ++query)
            hits[query] = watches[query].time([&] {
                index.search(queries[query], found);
                return found.size();
            });
    }

    for (std::size_t query = 0; query < queries.size(); ++query) {
        std::string text;
        appendJsonString(queries[query], text);
        std::printf("{\"text\": %s, \"hits\": %zu, \"microseconds\": {\"median\": %.1f, \"p99\": %.1f}}\n",
                    text.c_str(), hits[query], watches[query].microseconds(0.5),
                    watches[query].microseconds(0.99));
    }
    std::printf("{\"queries\": %zu, \"repeats\": %d, \"folders\": %zu, \"bytes\": %zu, "
                "\"counting_microseconds\": {\"median\": %.1f, \"p99\": %.1f}}\n",
                queries.size(), repeats, index.size(), names.size(), countingWatch.microseconds(0.5),
                countingWatch.microseconds(0.99));
}

} // namespace brimwick
