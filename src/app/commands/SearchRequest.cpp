#include "app/commands/SearchRequest.h"

#include "app/commands/ExitCode.h"

namespace brimwick {

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
            if (arguments.size() != 2)
                return {ExitCode::failed, "the running Brimwick is of another version"};
            return search(*index, arguments[0], formatNamed(arguments[1]), output);
        };
}

} // namespace brimwick
