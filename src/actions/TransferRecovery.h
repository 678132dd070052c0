#pragma once

#include "actions/CompareTrees.h"
#include "actions/FileJournal.h"
#include "actions/JournalEntry.h"
#include "actions/OpenFolders.h"

#include <optional>
#include <stop_token>
#include <string>
#include <system_error>

namespace brimwick {

/// How a transfer stands after it was looked at.
struct RecoveryOutcome {
    /// No later start has to look at it.
    bool atItsEnd;
    std::string line; ///< for the user; may be empty
};

/// Puts right what one transfer left that an earlier run did not bring to its end. First look(); where that
/// answers nothing there is a move to finish, by the steps after it in their order. Between them, what they
/// wait for is flushed for many transfers at once. Holds two folders open. The transfer and the other
/// arguments outlive it; it stays where it is in memory. One thread.
///
/// Any step may throw where the system does not answer; then the transfer is left to a later start.
class TransferRecovery {
  public:
    TransferRecovery(FileJournal& journal, const InterruptedTransfer& transfer, OpenFolders& folders);
    TransferRecovery(const TransferRecovery&) = delete;
    TransferRecovery& operator=(const TransferRecovery&) = delete;

    /// Removes a hidden copy, gives a source its name back, or finds that a move can be finished, as its copy
    /// is the same.
    std::optional<RecoveryOutcome> look(const std::stop_token& stop);
    /// Its file system must be flushed before the next step.
    const OpenFolder& targetFolder() const { return target_.place->folder; }
    RecoveryOutcome notDurable(std::error_code reason) const;
    /// Notes what the last step does; the journal must be flushed before it.
    void announceRemoval();
    /// Provided that both still are what they were. The names in the source folder should be flushed then.
    RecoveryOutcome removeSource();

  private:
    /// The folder of a path, which may be another one than it was: an empty place where a disk belongs, say.
    struct FoundPlace {
        std::optional<ItemPlace> place;
        bool isTheVeryFolder = false;

        FoundPlace(OpenFolders& folders, const std::string& path, const FolderMark& mark);
        int folder() const { return place->folder.descriptor(); }
        /// Nothing when there is nothing; throws when that cannot be told.
        std::optional<struct stat> status(const std::string& name) const;
        bool has(const std::string& name) const { return status(name).has_value(); }
        bool hasItem() const { return has(place->name); }
    };

    const std::string& ownName() const { return source_.place->name; }
    bool isClaimed() const { return !claimed_.empty() && source_.has(claimed_); }
    std::string what() const;
    std::string whereItIs() const;
    RecoveryOutcome wait() const;
    void dropSecondName() const;
    RecoveryOutcome removeCopy(const std::stop_token& stop) const;
    std::optional<RecoveryOutcome> compare(const std::string& name, const std::stop_token& stop);
    RecoveryOutcome later(const std::string& why, const std::string& name) const;
    RecoveryOutcome keepBoth(const std::string& name, const std::string& why) const;

    FileJournal& journal_;
    const InterruptedTransfer& transfer_;
    OpenFolders& folders_;
    FoundPlace source_;
    FoundPlace target_;
    std::string claimed_; ///< the hidden name of the source, whether or not it has it

    /// Of a move to finish.
    std::string name_; ///< that the source has: its own one or the hidden one
    SameEntries same_;
    std::optional<JournalEntry> notes_;
    std::string hidden_; ///< the name that it is removed by
};

} // namespace brimwick
