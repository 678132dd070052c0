#include "app/commands/SearchRequest.h"

#include "app/commands/ExitCode.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

namespace brimwick {

namespace {

constexpr std::array<std::pair<SearchFormat, const char*>, 4> formatNames = {{
    {SearchFormat::lines, "lines"},
    {SearchFormat::terminal, "terminal"},
    {SearchFormat::nulSeparated, "nul-separated"},
    {SearchFormat::json, "json"},
}};

std::string formatName(SearchFormat format) {
    return std::ranges::find(formatNames, format, &decltype(formatNames)::value_type::first)->second;
}

std::optional<SearchFormat> formatNamed(const std::string& name) {
    for (const auto& [format, candidate] : formatNames)
        if (name == candidate) return format;
    return std::nullopt;
}

} // namespace

InstanceRequest searchRequest(const std::string& text, SearchFormat format) {
    return {.verb = "search", .arguments = {text, formatName(format)}};
}

RequestResult search(const FolderIndex& index, const std::string& text, SearchFormat format,
                     const ByteSink& output) {
    const std::vector<FolderNumber> found = index.search(text);
    if (!writeSearchResults(index, found, format, output)) return {ExitCode::failed, ""};
    if (found.empty()) return {ExitCode::failed, "No folders found."};
    return {ExitCode::done, ""};
}

InstanceService::Work answerSearchRequest(const InstanceRequest& request,
                                          std::shared_ptr<const FolderIndex> index) {
    return
        [arguments = request.arguments, index = std::move(index)](const ByteSink& output) -> RequestResult {
            const auto format = arguments.size() == 2 ? formatNamed(arguments[1]) : std::nullopt;
            if (!format) return {ExitCode::failed, "the running Brimwick is of another version"};
            return search(*index, arguments[0], *format, output);
        };
}

} // namespace brimwick
