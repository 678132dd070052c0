#include "actions/Recovery.h"

#include "actions/CompareTrees.h"
#include "actions/HiddenName.h"
#include "actions/JournalEntry.h"
#include "actions/RemoveTree.h"
#include "actions/RemoveVerified.h"
#include "actions/RenameWithoutReplacing.h"
#include "actions/SystemError.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <exception>
#include <optional>
#include <system_error>

namespace brimwick {

namespace {

/// How a transfer stands after it was looked at.
struct Outcome {
    bool atItsEnd;
    std::string line; ///< for the user; may be empty
};

Outcome notNow() {
    return {false, ""};
}

Outcome nothingToDo() {
    return {true, ""};
}

Outcome failed(const std::string& what, const std::string& path, std::error_code reason) {
    return {false, fileError(what, path, reason).description};
}

/// The folder of a path, which may be another one than it was: an empty place where a disk belongs, say.
struct FoundPlace {
    std::optional<ItemPlace> place;
    bool isTheVeryFolder = false;

    FoundPlace(const std::string& path, const FolderMark& mark) {
        auto opened = ItemPlace::open(path);
        if (!opened) return;
        isTheVeryFolder = mark.fits(opened->folder.descriptor());
        place.emplace(std::move(*opened));
    }

    int folder() const { return place->folder.descriptor(); }
    /// Nothing when there is nothing; throws when that cannot be told.
    std::optional<struct stat> status(const std::string& name) const {
        struct stat status {};
        if (fstatat(folder(), name.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0) return status;
        if (errno == ENOENT) return std::nullopt;
        throw std::system_error(lastSystemError(), place->folder.pathOf(name));
    }
    bool has(const std::string& name) const { return status(name).has_value(); }
    bool hasItem() const { return has(place->name); }
};

bool isDifference(const std::error_code& code) {
    return code == std::errc::device_or_resource_busy || code == std::errc::not_a_directory ||
           code == std::errc::no_such_file_or_directory;
}

std::string reasonOf(const TreeWalkError& difference) {
    if (!isDifference(difference.code)) return "could not be compared: " + difference.code.message();
    const std::string& where = difference.relativePath;
    return where.empty() ? "is not the same" : "is not the same in \"" + where + '"';
}

class Recovery {
  public:
    Recovery(FileJournal& journal, const InterruptedTransfer& transfer, const std::stop_token& stop)
        : journal_(journal), transfer_(transfer), stop_(stop),
          source_(transfer.source, transfer.sourceFolder), target_(transfer.staged, transfer.targetFolder),
          claimed_(lastPathComponent(transfer.claimed)) {}

    Outcome run() const {
        if (!source_.place) return notNow();
        if (target_.place && target_.hasItem()) return removeCopy();
        if (!target_.isTheVeryFolder) return wait();
        if (!transfer_.isMove || transfer_.destination.empty()) return nothingToDo();
        dropSecondName();
        if (isClaimed()) return finishMove(claimed_);
        if (!source_.isTheVeryFolder) return notNow();
        return source_.hasItem() ? finishMove(ownName()) : nothingToDo();
    }

  private:
    const std::string& ownName() const { return source_.place->name; }
    bool isClaimed() const { return !claimed_.empty() && source_.has(claimed_); }
    std::string what() const {
        return std::string("an interrupted ") + (transfer_.isMove ? "move" : "copy") + " of file " +
               ownName();
    }
    std::string whereItIs() const {
        return (transfer_.removing ? "what is left of it is in folder " : "it is still in folder ") +
               source_.place->folder.path();
    }

    /// Until the target folder is there again. A source that is hidden meanwhile can be found by its user.
    Outcome wait() const {
        if (!isClaimed()) return notNow();
        return later("folder " + parentPath(transfer_.destination) + " is not there", claimed_);
    }

    /// Where a file system cannot rename without replacing, the hidden name may be there besides the own one:
    /// of an empty folder, or of the same file.
    void dropSecondName() const {
        if (claimed_.empty()) return;
        const auto own = source_.status(ownName());
        const auto hidden = source_.status(claimed_);
        if (!own || !hidden || own->st_ino != transfer_.sourceInode) return;
        if (S_ISDIR(hidden->st_mode))
            unlinkat(source_.folder(), claimed_.c_str(), AT_REMOVEDIR);
        else if (own->st_dev == hidden->st_dev && own->st_ino == hidden->st_ino)
            unlinkat(source_.folder(), claimed_.c_str(), 0);
    }

    Outcome removeCopy() const {
        const std::string& name = target_.place->name;
        const std::string kept = "Kept \"" + transfer_.staged + "\", left by " + what() + ", because ";
        if (!source_.hasItem())
            return source_.isTheVeryFolder ? Outcome{true, kept + "the file is gone"} : notNow();
        const auto compared = compareTrees(
            {{target_.folder(), name}, {source_.folder(), ownName()}, FileMatch::Beginning, {}}, stop_);
        if (stop_.stop_requested()) return notNow();
        if (!compared)
            return {isDifference(compared.error().code), kept + "it " + reasonOf(compared.error())};
        // Exactly what was compared: nothing that came to it since.
        if (auto error = removeLogged(target_.folder(), name, compared->item))
            return failed("Could not remove what " + what() + " left,", transfer_.staged, error);
        return {true,
                "Cleaned up after " + what() + ", which is still in folder " + source_.place->folder.path()};
    }

    /// `name` is the source's own one or the hidden one.
    Outcome finishMove(const std::string& name) const {
        const std::string copy = lastPathComponent(transfer_.destination);
        const std::string& folder = target_.place->folder.path();
        const auto copyStatus = target_.status(copy);
        if (!copyStatus || copyStatus->st_ino != transfer_.copyInode)
            return keepBoth(name, "its copy is not in folder " + folder + " any more");
        const auto status = source_.status(name);
        if (name == ownName() && (!status || status->st_ino != transfer_.sourceInode))
            return keepBoth(name, "another file has its name now");
        std::optional<std::chrono::nanoseconds> unchangedSince;
        if (name == ownName()) unchangedSince = transfer_.begun;
        const auto compared = compareTrees(
            {{source_.folder(), name}, {target_.folder(), copy}, FileMatch::Same, unchangedSince}, stop_);
        if (stop_.stop_requested()) return notNow();
        if (!compared) {
            const std::string why = "its copy in folder " + folder + ' ' + reasonOf(compared.error());
            return isDifference(compared.error().code) ? keepBoth(name, why) : later(why, name);
        }
        if (auto error = target_.place->folder.syncFileSystem())
            return failed("Could not finish " + what() + ", as a power cut may undo", transfer_.destination,
                          error);
        return remove(name, *compared);
    }

    Outcome remove(const std::string& name, const SameEntries& same) const {
        JournalEntry notes(journal_, *source_.place, transfer_);
        notes.keepOpen();
        std::string hidden = name;
        if (name == ownName()) {
            hidden = hiddenName("moved");
            notes.claiming(hidden);
            notes.flush();
            if (auto error = renameWithoutReplacing(source_.folder(), name, source_.folder(), hidden))
                return later("it could not be removed: " + error.message(), name);
        }
        // The user may have taken the copy away while it was compared.
        const auto copyIsThere = [&] {
            return checkEntries({target_.folder(), lastPathComponent(transfer_.destination)}, same.other);
        };
        const auto removed = removeClaimed(*source_.place, hidden, same.item, notes, copyIsThere);
        if (!removed) {
            const RemovalError& error = removed.error();
            if (!error.isPartlyRemoved && isDifference(error.code))
                return keepBoth(hidden, "it or its copy has changed");
            return later("it could not be removed: " + error.code.message(), hidden);
        }
        // Should its name come back after a power cut, there is an item twice, and none lost.
        static_cast<void>(source_.place->folder.sync());
        return {true, "Finished " + what() + " to folder " + target_.place->folder.path()};
    }

    /// The next start has another try.
    Outcome later(const std::string& why, const std::string& name) const {
        return {false, "Could not finish " + what() + " yet, because " + why + "; until then it is \"" +
                           source_.place->folder.pathOf(name) + '"'};
    }

    Outcome keepBoth(const std::string& name, const std::string& why) const {
        if (name != ownName()) {
            if (auto error = renameWithoutReplacing(source_.folder(), name, source_.folder(), ownName()))
                return failed("Could not give back its name to what is left of " + what() + ",",
                              source_.place->folder.pathOf(name), error);
        }
        return {true, "Did not finish " + what() + ", because " + why + "; " + whereItIs()};
    }

    FileJournal& journal_;
    const InterruptedTransfer& transfer_;
    const std::stop_token& stop_;
    FoundPlace source_;
    FoundPlace target_;
    std::string claimed_; ///< the hidden name of the source, whether or not it has it
};

/// A transfer that cannot be looked at does not keep the others from it.
Outcome recover(FileJournal& journal, const InterruptedTransfer& transfer, const std::stop_token& stop) {
    try {
        return Recovery(journal, transfer, stop).run();
    } catch (const std::exception& failure) {
        return {false, "Could not put right what was left of file " + lastPathComponent(transfer.source) +
                           ": " + failure.what()};
    }
}

} // namespace

std::vector<std::string> recoverInterrupted(FileJournal& journal, const std::stop_token& stop) {
    std::vector<std::string> lines;
    for (const InterruptedTransfer& transfer : journal.interrupted()) {
        if (stop.stop_requested()) break;
        const Outcome outcome = recover(journal, transfer, stop);
        if (outcome.atItsEnd) journal.end(transfer.number);
        if (!outcome.line.empty()) lines.push_back(outcome.line);
    }
    journal.write();
    return lines;
}

} // namespace brimwick
