#include "actions/JournalLine.h"

#include "actions/HiddenName.h"
#include "model/FileUrl.h"
#include "model/PathText.h"

#include <charconv>
#include <map>
#include <optional>
#include <ranges>

namespace brimwick {

namespace {

using Words = std::vector<std::string_view>;

Words wordsOf(std::string_view line) {
    Words words;
    for (const auto word : line | std::views::split(' ')) words.emplace_back(word.begin(), word.end());
    return words;
}

template<typename Number>
bool read(std::string_view word, Number& number) {
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
    return error == std::errc() && end == word.data() + word.size();
}

bool read(std::string_view word, std::string& path) {
    const auto decoded = pathOfFileUrl("file://" + std::string(word));
    path = decoded.value_or("");
    return !path.empty();
}

bool read(std::string_view kind, std::string_view inode, FolderMark& mark) {
    return read(kind, mark.fileSystem) && read(inode, mark.inode);
}

bool readStaging(const Words& words, InterruptedTransfer& transfer) {
    transfer.isMove = words[1] == "move";
    return words.size() == 9 && read(words[2], transfer.sourceInode) &&
           read(words[3], words[4], transfer.sourceFolder) &&
           read(words[5], words[6], transfer.targetFolder) && read(words[7], transfer.source) &&
           read(words[8], transfer.staged) && isHiddenName(lastPathComponent(transfer.staged), "part");
}

void readClaiming(const Words& words, InterruptedTransfer& transfer) {
    if (words.size() != 3 || !read(words[2], transfer.claimed)) return;
    if (!isHiddenName(lastPathComponent(transfer.claimed), "moved") ||
        parentPath(transfer.claimed) != parentPath(transfer.source))
        transfer.claimed.clear();
}

std::string text(const FolderMark& mark) {
    return std::to_string(mark.fileSystem) + ' ' + std::to_string(mark.inode) + ' ';
}

bool readNaming(const Words& words, InterruptedTransfer& transfer) {
    std::int64_t moment = 0;
    if (words.size() != 5 || !read(words[2], transfer.copyInode) || !read(words[3], moment) ||
        !read(words[4], transfer.destination))
        return false;
    transfer.begun = std::chrono::nanoseconds(moment);
    return true;
}

} // namespace

std::string journalLineForStaging(const InterruptedTransfer& transfer) {
    return std::string(transfer.isMove ? "move " : "copy ") + std::to_string(transfer.sourceInode) + ' ' +
           text(transfer.sourceFolder) + text(transfer.targetFolder) + percentEncodedPath(transfer.source) +
           ' ' + percentEncodedPath(transfer.staged);
}

std::string journalLineForNaming(const InterruptedTransfer& transfer) {
    return "name " + std::to_string(transfer.copyInode) + ' ' + std::to_string(transfer.begun.count()) + ' ' +
           percentEncodedPath(transfer.destination);
}

std::string journalLineForClaiming(const InterruptedTransfer& transfer) {
    return "claim " + percentEncodedPath(transfer.claimed);
}

std::string journalLinesOf(const InterruptedTransfer& transfer) {
    const std::string number = std::to_string(transfer.number) + ' ';
    std::string lines = number + journalLineForStaging(transfer) + '\n';
    if (!transfer.destination.empty()) lines += number + journalLineForNaming(transfer) + '\n';
    if (!transfer.claimed.empty()) lines += number + journalLineForClaiming(transfer) + '\n';
    if (transfer.removing) lines += number + std::string(journalLineForRemoving) + '\n';
    return lines;
}

std::vector<InterruptedTransfer> readJournal(std::string_view content) {
    std::map<std::uint64_t, InterruptedTransfer> transfers;
    std::size_t begin = 0;
    // The last line may have been cut short.
    for (std::size_t end = 0; (end = content.find('\n', begin)) != std::string_view::npos; begin = end + 1) {
        const Words words = wordsOf(content.substr(begin, end - begin));
        std::uint64_t number = 0;
        if (words.size() < 2 || !read(words[0], number)) continue;
        if (words[1] == "move" || words[1] == "copy") {
            InterruptedTransfer transfer;
            transfer.number = number;
            if (readStaging(words, transfer)) transfers[number] = transfer;
            continue;
        }
        const auto known = transfers.find(number);
        if (known == transfers.end()) continue;
        if (words[1] == "name") readNaming(words, known->second);
        if (words[1] == "claim") readClaiming(words, known->second);
        if (words[1] == journalLineForRemoving) known->second.removing = true;
        if (words[1] == journalLineForEnd) transfers.erase(known);
    }
    const auto values = transfers | std::views::values;
    return {values.begin(), values.end()};
}

} // namespace brimwick
