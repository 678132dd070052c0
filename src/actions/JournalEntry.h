#pragma once

#include "actions/FileJournal.h"
#include "actions/OpenFolder.h"

#include <string>

namespace brimwick {

/// The notes of one transfer, whose source outlives them. Each is made, and the journal written or flushed,
/// before the step that it is about. With its end the transfer is brought to its end too, however it went,
/// unless something of it lies about.
class JournalEntry {
  public:
    JournalEntry(FileJournal& journal, const ItemPlace& source, ino_t sourceInode, bool isMove);
    /// Goes on with one that an earlier run did not bring to its end.
    JournalEntry(FileJournal& journal, const ItemPlace& source, InterruptedTransfer transfer);
    JournalEntry(const JournalEntry&) = delete;
    JournalEntry& operator=(const JournalEntry&) = delete;
    ~JournalEntry();

    /// A hidden copy will be made under this name.
    void staging(const OpenFolder& target, const std::string& name);
    /// The hidden copy, which is complete, will get this name.
    void naming(const OpenFolder& target, ino_t copyInode, const std::string& name);
    /// The source will get this hidden name, to be removed.
    void claiming(const std::string& name);
    /// Entries of the source are about to be removed.
    void removing();
    /// The notes of all transfers so far outlast a crash of the program then.
    void write();
    /// They outlast power cuts, too.
    void flush();
    /// What could not be removed is left to the next start.
    void keepOpen() { open_ = true; }

  private:
    FileJournal& journal_;
    const ItemPlace& source_;
    InterruptedTransfer transfer_;
    bool open_ = false;
};

} // namespace brimwick
