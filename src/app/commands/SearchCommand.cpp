#include "app/commands/SearchCommand.h"

#include "app/commands/AbsoluteFolder.h"
#include "app/commands/SearchArguments.h"
#include "app/commands/SearchRequest.h"
#include "app/commands/StoredFolders.h"
#include "model/FolderIndexer.h"

#include <algorithm>

namespace brimwick {

namespace {

void complain(const std::string& problem, const CommandSurroundings& surroundings) {
    surroundings.complain("brimwick search: " + problem);
}

int report(const RequestResult& result, const CommandSurroundings& surroundings) {
    if (!result.message.empty()) complain(result.message, surroundings);
    return result.exitCode;
}

int searchIn(const std::vector<std::string>& folders, const SearchArguments& search,
             const CommandSurroundings& surroundings) {
    const auto index = indexOfFolders(
        folders, [](std::string_view) {}, std::stop_token());
    return report(brimwick::search(*index, search.text, search.format, surroundings.output), surroundings);
}

/// A folder that is not there does not keep the others from being searched.
int searchInGiven(const SearchArguments& search, const CommandSurroundings& surroundings) {
    std::vector<std::string> folders;
    for (const std::string& given : search.folders) {
        if (auto folder = absoluteFolder(given))
            folders.push_back(*std::move(folder));
        else
            complain(folder.error(), surroundings);
    }
    if (folders.empty()) return ExitCode::failed;
    const int result = searchIn(folders, search, surroundings);
    return folders.size() == search.folders.size() ? result : ExitCode::failed;
}

int searchInStored(const SearchArguments& search, const CommandSurroundings& surroundings) {
    if (const auto answer =
            surroundings.running.request(searchRequest(search.text, search.format), surroundings.output))
        return report(*answer, surroundings);
    const auto folders = storedFolders(surroundings.homeDirectory(), surroundings.resourceDirectory);
    if (!folders) return report({ExitCode::failed, folders.error()}, surroundings);
    return searchIn(*folders, search, surroundings);
}

} // namespace

int runSearch(const CommandArguments& arguments, const CommandSurroundings& surroundings) {
    auto search = parseSearchArguments(arguments);
    if (!search) return misused(searchCommand, search.error(), surroundings);
    if (search->format == SearchFormat::lines && surroundings.outputIsTerminal)
        search->format = SearchFormat::terminal;
    return search->folders.empty() ? searchInStored(*search, surroundings)
                                   : searchInGiven(*search, surroundings);
}

} // namespace brimwick
