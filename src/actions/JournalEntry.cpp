#include "actions/JournalEntry.h"

#include "actions/JournalLine.h"

namespace brimwick {

JournalEntry::JournalEntry(FileJournal& journal, const ItemPlace& source, ino_t sourceInode, bool isMove)
    : journal_(journal), source_(source) {
    transfer_.number = journal.begin();
    transfer_.isMove = isMove;
    transfer_.source = source.path();
    transfer_.sourceFolder = source.folder.mark();
    transfer_.sourceInode = sourceInode;
    transfer_.begun = std::chrono::system_clock::now().time_since_epoch();
}

JournalEntry::JournalEntry(FileJournal& journal, const ItemPlace& source, InterruptedTransfer transfer)
    : journal_(journal), source_(source), transfer_(std::move(transfer)) {}

JournalEntry::~JournalEntry() {
    if (!open_) journal_.end(transfer_.number);
}

void JournalEntry::staging(const OpenFolder& target, const std::string& name) {
    transfer_.targetFolder = target.mark();
    transfer_.staged = target.pathOf(name);
    journal_.note(transfer_.number, journalLineForStaging(transfer_));
}

void JournalEntry::naming(const OpenFolder& target, ino_t copyInode, const std::string& name) {
    transfer_.copyInode = copyInode;
    transfer_.destination = target.pathOf(name);
    journal_.note(transfer_.number, journalLineForNaming(transfer_));
}

void JournalEntry::claiming(const std::string& name) {
    transfer_.claimed = source_.folder.pathOf(name);
    journal_.note(transfer_.number, journalLineForClaiming(transfer_));
}

void JournalEntry::removing() {
    journal_.note(transfer_.number, journalLineForRemoving);
}

void JournalEntry::write() {
    journal_.write();
}

void JournalEntry::flush() {
    journal_.flush();
}

} // namespace brimwick
