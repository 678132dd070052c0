#pragma once

#include "actions/InterruptedTransfer.h"
#include "platform/ports/FileDescriptor.h"

#include <cstdint>
#include <mutex>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace brimwick {

/// The file in which transfers by way of a hidden copy are noted while they are under way, so that the next
/// start can put right what a crash left. A journal that cannot be written keeps nothing and stops no
/// transfer: it is there for tidiness, not for safety. Any thread.
class FileJournal {
  public:
    /// Keeps nothing.
    FileJournal() = default;
    /// Reads what earlier runs left in the file, which is made when it is not there. Where another process
    /// has the same journal, this one keeps nothing and has nothing to put right.
    explicit FileJournal(const std::string& path);
    FileJournal(const FileJournal&) = delete;
    FileJournal& operator=(const FileJournal&) = delete;
    ~FileJournal();

    /// Not brought to their end by earlier runs, as this one found them.
    const std::vector<InterruptedTransfer>& interrupted() const { return interrupted_; }

    /// A number for one more transfer.
    std::uint64_t begin();
    /// What the transfer is about to do, a line of JournalLine.h. Kept in memory until it is written.
    void note(std::uint64_t number, std::string_view line);
    /// What was noted so far outlasts a crash of the program then.
    void write();
    /// What was noted so far outlasts power cuts, too.
    void flush();
    /// Nothing of it needs to be put right any more. A note like the others, but for the last transfer under
    /// way, whose end empties the file at once.
    void end(std::uint64_t number);

  private:
    void writeAnew();
    void writeNotes();
    bool append(std::string_view text);

    FileDescriptor file_;
    off_t size_ = 0;
    std::string notes_; ///< not written yet
    std::vector<InterruptedTransfer> interrupted_;
    std::mutex mutex_;
    std::set<std::uint64_t> underWay_;
    std::uint64_t lastNumber_ = 0;
};

} // namespace brimwick
