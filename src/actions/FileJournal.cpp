#include "actions/FileJournal.h"

#include "actions/JournalLine.h"
#include "model/WholeFile.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <algorithm>
#include <utility>

namespace brimwick {

namespace {

constexpr std::size_t largestJournal = std::size_t{1} << 30U;
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
    size_ = static_cast<off_t>(content->size());
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

FileJournal::~FileJournal() {
    writeNotes();
}

/// Only what still waits.
void FileJournal::writeAnew() {
    if (ftruncate(file_.get(), 0) != 0) return;
    size_ = 0;
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
    if (file_) notes_.append(std::to_string(number)).append(1, ' ').append(line).append(1, '\n');
}

void FileJournal::write() {
    const std::lock_guard lock(mutex_);
    writeNotes();
}

void FileJournal::flush() {
    const std::lock_guard lock(mutex_);
    writeNotes();
    if (file_) fdatasync(file_.get());
}

void FileJournal::end(std::uint64_t number) {
    note(number, journalLineForEnd);
    const std::lock_guard lock(mutex_);
    underWay_.erase(number);
    if (!underWay_.empty() || !file_) return;
    if (size_ > 0 && ftruncate(file_.get(), 0) != 0) return;
    size_ = 0;
    notes_.clear();
}

void FileJournal::writeNotes() {
    if (const std::string notes = std::exchange(notes_, {}); !notes.empty()) append(notes);
}

bool FileJournal::append(std::string_view text) {
    if (writeAll(file_.get(), text)) {
        size_ += static_cast<off_t>(text.size());
        return true;
    }
    // Whole lines are worth keeping, half a line would spoil the next one. Should this fail, the reader
    // passes over both.
    struct stat status {};
    if (fstat(file_.get(), &status) != 0 || status.st_size < size_) return false;
    const std::string_view written = text.substr(0, static_cast<std::size_t>(status.st_size - size_));
    size_ += static_cast<off_t>(written.rfind('\n') + 1);
    static_cast<void>(ftruncate(file_.get(), size_));
    return false;
}

} // namespace brimwick
