#include "actions/FileJournal.h"

#include "actions/JournalLine.h"
#include "model/WholeFile.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <algorithm>

namespace brimwick {

namespace {

constexpr std::size_t largestJournal = std::size_t{64} << 20U;
/// Worth the moment in which nothing is noted.
constexpr std::size_t muchJournal = std::size_t{1} << 20U;

} // namespace

FileJournal::FileJournal(const std::string& path) {
    FileDescriptor file(
        open(path.c_str(), O_RDWR | O_CREAT | O_APPEND | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, 0600));
    if (!file || flock(file.get(), LOCK_EX | LOCK_NB) != 0) return;
    const auto content = readWholeFile(path, largestJournal);
    if (!content) return;
    file_ = std::move(file);
    interrupted_ = readJournal(*content);
    for (const InterruptedTransfer& transfer : interrupted_) {
        underWay_.insert(transfer.number);
        lastNumber_ = std::max(lastNumber_, transfer.number);
    }
    if (interrupted_.empty() || content->size() > muchJournal)
        writeAnew();
    else if (!content->ends_with('\n'))
        append("\n"); // so that half a line of a power cut does not run into the next one
}

/// Only what still waits.
void FileJournal::writeAnew() const {
    if (ftruncate(file_.get(), 0) != 0) return;
    std::string text;
    for (const InterruptedTransfer& transfer : interrupted_) text += journalLinesOf(transfer);
    if (!text.empty() && append(text)) fdatasync(file_.get());
}

std::uint64_t FileJournal::begin() {
    const std::lock_guard lock(mutex_);
    underWay_.insert(++lastNumber_);
    return lastNumber_;
}

void FileJournal::note(std::uint64_t number, std::string_view line) {
    const std::lock_guard lock(mutex_);
    if (file_) append(std::to_string(number) + ' ' + std::string(line) + '\n');
}

void FileJournal::flush() {
    const std::lock_guard lock(mutex_);
    if (file_) fdatasync(file_.get());
}

void FileJournal::end(std::uint64_t number) {
    const std::lock_guard lock(mutex_);
    underWay_.erase(number);
    if (!file_) return;
    if (underWay_.empty() && ftruncate(file_.get(), 0) == 0) return;
    append(std::to_string(number) + ' ' + std::string(journalLineForEnd) + '\n');
}

bool FileJournal::append(std::string_view text) const {
    struct stat before {};
    if (fstat(file_.get(), &before) != 0) return false;
    if (writeAll(file_.get(), text)) return true;
    // Half a line would spoil the next one. Should this fail too, the reader passes over both.
    static_cast<void>(ftruncate(file_.get(), before.st_size));
    return false;
}

} // namespace brimwick
