#include "actions/Recovery.h"

#include "actions/CompareTrees.h"
#include "actions/JournalEntry.h"
#include "actions/RemoveTree.h"
#include "actions/RemoveVerified.h"
#include "actions/RenameWithoutReplacing.h"
#include "actions/SystemError.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <optional>

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

    FoundPlace(const std::string& path, ino_t inode) {
        auto opened = ItemPlace::open(path);
        if (!opened) return;
        struct stat status {};
        isTheVeryFolder = fstat(opened->folder.descriptor(), &status) == 0 && status.st_ino == inode;
        place.emplace(std::move(*opened));
    }

    int folder() const { return place->folder.descriptor(); }
    std::optional<struct stat> status(const std::string& name) const {
        struct stat status {};
        if (fstatat(folder(), name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0) return std::nullopt;
        return status;
    }
    bool has(const std::string& name) const { return status(name).has_value(); }
    bool hasItem() const { return has(place->name); }
};

std::string reasonOf(const TreeWalkError& difference) {
    if (difference.code == std::errc::device_or_resource_busy ||
        difference.code == std::errc::not_a_directory ||
        difference.code == std::errc::no_such_file_or_directory)
        return "is not the same";
    return "could not be compared: " + difference.code.message();
}

class Recovery {
  public:
    Recovery(FileJournal& journal, const InterruptedTransfer& transfer, const std::stop_token& stop)
        : journal_(journal), transfer_(transfer), stop_(stop),
          source_(transfer.source, transfer.sourceFolderInode),
          target_(transfer.staged, transfer.targetFolderInode) {}

    Outcome run() const {
        if (!source_.place || !target_.place) return notNow();
        if (target_.hasItem()) return removeCopy();
        if (!target_.isTheVeryFolder) return notNow();
        if (!transfer_.isMove || transfer_.destination.empty()) return nothingToDo();
        const std::string claimed = lastPathComponent(transfer_.claimed);
        if (!claimed.empty() && source_.has(claimed)) return finishMove(claimed);
        if (source_.hasItem()) return finishMove(ownName());
        return source_.isTheVeryFolder ? nothingToDo() : notNow();
    }

  private:
    const std::string& ownName() const { return source_.place->name; }
    std::string what() const {
        return std::string("an interrupted ") + (transfer_.isMove ? "move" : "copy") + " of file " +
               ownName();
    }
    std::string stillThere() const { return "still in folder " + source_.place->folder.path(); }

    Outcome removeCopy() const {
        const std::string& name = target_.place->name;
        const std::string kept = "Kept \"" + transfer_.staged + "\", left by " + what() + ", because ";
        if (!source_.hasItem())
            return source_.isTheVeryFolder ? Outcome{true, kept + "the file is gone"} : notNow();
        const auto compared = compareTrees(
            {{target_.folder(), name}, {source_.folder(), ownName()}, FileMatch::Beginning, {}}, stop_);
        if (stop_.stop_requested()) return notNow();
        if (!compared) return {true, kept + "it " + reasonOf(compared.error())};
        if (auto error = removeTree(target_.folder(), name))
            return failed("Could not remove what " + what() + " left,", transfer_.staged, error);
        return {true, "Cleaned up after " + what() + ", which is " + stillThere()};
    }

    /// `name` is the source's own one or the hidden one.
    Outcome finishMove(const std::string& name) const {
        const std::string copy = lastPathComponent(transfer_.destination);
        const std::string& folder = target_.place->folder.path();
        const auto copyStatus = target_.status(copy);
        if (!copyStatus || copyStatus->st_ino != transfer_.copyInode)
            return keepBoth(name, "its copy is not in folder " + folder + " any more");
        std::optional<std::chrono::nanoseconds> unchangedSince;
        if (name == ownName()) unchangedSince = transfer_.completed;
        const auto compared = compareTrees(
            {{source_.folder(), name}, {target_.folder(), copy}, FileMatch::Same, unchangedSince}, stop_);
        if (stop_.stop_requested()) return notNow();
        if (!compared)
            return keepBoth(name, "its copy in folder " + folder + ' ' + reasonOf(compared.error()));
        if (syncfs(target_.folder()) != 0)
            return failed("Could not finish " + what() + ", as a power cut may undo", transfer_.destination,
                          lastSystemError());
        return remove(name, *compared);
    }

    Outcome remove(const std::string& name, const CopyLog& log) const {
        JournalEntry notes(journal_, *source_.place, transfer_);
        notes.keepOpen();
        const auto removed = name == ownName() ? removeVerified(*source_.place, log, notes)
                                               : removeClaimed(*source_.place, name, log);
        const bool nothingHidden = name == ownName() ? source_.hasItem() : !source_.has(name);
        if (!removed) return {nothingHidden, removed.error().description};
        return {true, "Finished " + what() + " to folder " + target_.place->folder.path()};
    }

    Outcome keepBoth(const std::string& name, const std::string& why) const {
        if (name != ownName()) {
            if (auto error = renameWithoutReplacing(source_.folder(), name, source_.folder(), ownName()))
                return failed("Could not give back its name to what is left of " + what() + ",",
                              source_.place->folder.pathOf(name), error);
        }
        return {true, "Did not finish " + what() + ", because " + why + "; it is " + stillThere()};
    }

    FileJournal& journal_;
    const InterruptedTransfer& transfer_;
    const std::stop_token& stop_;
    FoundPlace source_;
    FoundPlace target_;
};

} // namespace

std::vector<std::string> recoverInterrupted(FileJournal& journal, const std::stop_token& stop) {
    std::vector<std::string> lines;
    for (const InterruptedTransfer& transfer : journal.interrupted()) {
        if (stop.stop_requested()) break;
        const Outcome outcome = Recovery(journal, transfer, stop).run();
        if (outcome.atItsEnd) journal.end(transfer.number);
        if (!outcome.line.empty()) lines.push_back(outcome.line);
    }
    return lines;
}

} // namespace brimwick
