#include "actions/JournalEntry.h"

#include "actions/JournalLine.h"

#include <fcntl.h>
#include <sys/stat.h>

namespace brimwick {

namespace {

ino_t inodeOf(int folder, const std::string& name) {
    struct stat status {};
    return fstatat(folder, name.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0 ? status.st_ino : 0;
}

} // namespace

JournalEntry::JournalEntry(FileJournal& journal, const ItemPlace& source, bool isMove)
    : journal_(journal), source_(source) {
    transfer_.number = journal.begin();
    transfer_.isMove = isMove;
    transfer_.source = source.path();
    transfer_.sourceFolder = FolderMark::of(source.folder.descriptor());
    transfer_.sourceInode = inodeOf(source.folder.descriptor(), source.name);
}

JournalEntry::JournalEntry(FileJournal& journal, const ItemPlace& source, InterruptedTransfer transfer)
    : journal_(journal), source_(source), transfer_(std::move(transfer)) {}

JournalEntry::~JournalEntry() {
    if (!open_) journal_.end(transfer_.number);
}

void JournalEntry::staging(const OpenFolder& target, const std::string& name) {
    transfer_.targetFolder = FolderMark::of(target.descriptor());
    transfer_.staged = target.pathOf(name);
    journal_.note(transfer_.number, journalLineForStaging(transfer_));
}

void JournalEntry::naming(const OpenFolder& target, const std::string& stagedName, const std::string& name) {
    transfer_.copyInode = inodeOf(target.descriptor(), stagedName);
    transfer_.destination = target.pathOf(name);
    transfer_.completed = std::chrono::system_clock::now().time_since_epoch();
    journal_.note(transfer_.number, journalLineForNaming(transfer_));
}

void JournalEntry::claiming(const std::string& name) {
    transfer_.claimed = source_.folder.pathOf(name);
    journal_.note(transfer_.number, journalLineForClaiming(transfer_));
}

void JournalEntry::removing() {
    journal_.note(transfer_.number, journalLineForRemoving);
}

void JournalEntry::flush() {
    journal_.flush();
}

} // namespace brimwick
