#include "app/commands/SearchArguments.h"

#include <optional>

namespace brimwick {

namespace {

constexpr std::string_view inFolderPrefix = "--in=";

/// Reads one argument after the other.
class Parser {
  public:
    tl::expected<SearchArguments, std::string> parse(const CommandArguments& arguments) {
        for (const std::string& argument : arguments) {
            take(argument);
            if (!problem_.empty()) return tl::unexpected(problem_);
        }
        endFolders();
        if (problem_.empty() && !text_) problem_ = "the text to search for is missing";
        if (!problem_.empty()) return tl::unexpected(problem_);
        result_.text = *text_;
        return result_;
    }

  private:
    void take(const std::string& argument) {
        const bool isOption = !optionsEnded_ && argument.size() > 1 && argument.starts_with('-');
        if (isOption) {
            endFolders();
            takeOption(argument);
        } else if (takesFolders_) {
            takeFolder(argument);
        } else if (text_) {
            problem_ = "more than one text; put quotes around what belongs together";
        } else {
            text_ = argument;
        }
    }

    void takeOption(const std::string& option) {
        if (option == "--")
            optionsEnded_ = true;
        else if (option == "--in")
            takesFolders_ = true;
        else if (option.starts_with(inFolderPrefix))
            takeFolder(option.substr(inFolderPrefix.size()));
        else if (option == "--json")
            setFormat(SearchFormat::json);
        else if (option == "-0")
            setFormat(SearchFormat::nulSeparated);
        else
            problem_ = "unknown option " + option;
    }

    void takeFolder(const std::string& folder) {
        if (folder.empty()) problem_ = "the name of a folder is empty";
        result_.folders.push_back(folder);
        folderIsDue_ = false;
    }

    void setFormat(SearchFormat format) {
        if (result_.format != SearchFormat::lines && result_.format != format)
            problem_ = "--json and -0 exclude each other";
        result_.format = format;
    }

    void endFolders() {
        if (takesFolders_ && folderIsDue_) problem_ = "--in needs a folder";
        takesFolders_ = false;
        folderIsDue_ = true;
    }

    SearchArguments result_;
    std::optional<std::string> text_;
    std::string problem_;
    bool takesFolders_ = false;
    bool folderIsDue_ = true;
    bool optionsEnded_ = false;
};

} // namespace

tl::expected<SearchArguments, std::string> parseSearchArguments(const CommandArguments& arguments) {
    return Parser().parse(arguments);
}

} // namespace brimwick
