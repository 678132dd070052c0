#include "actions/TransferRecovery.h"

#include "actions/HiddenName.h"
#include "actions/RemoveTree.h"
#include "actions/RemoveVerified.h"
#include "actions/RenameWithoutReplacing.h"
#include "actions/SystemError.h"

#include <fcntl.h>
#include <sys/stat.h>

namespace brimwick {

namespace {

RecoveryOutcome notNow() {
    return {false, ""};
}

RecoveryOutcome nothingToDo() {
    return {true, ""};
}

RecoveryOutcome failed(const std::string& what, const std::string& path, std::error_code reason) {
    return {false, fileError(what, path, reason).description};
}

bool isDifference(const std::error_code& code) {
    return code == std::errc::device_or_resource_busy || code == std::errc::not_a_directory ||
           code == std::errc::no_such_file_or_directory;
}

std::string reasonOf(const TreeWalkError& difference) {
    if (!isDifference(difference.code)) return "could not be compared: " + difference.code.message();
    const std::string& where = difference.relativePath;
    return where.empty() ? "is not the same" : "is not the same in \"" + where + '"';
}

} // namespace

TransferRecovery::FoundPlace::FoundPlace(OpenFolders& folders, const std::string& path,
                                         const FolderMark& mark) {
    auto opened = folders.openPlace(path);
    if (!opened) return;
    isTheVeryFolder = mark.fits(opened->folder.descriptor());
    place.emplace(std::move(*opened));
}

std::optional<struct stat> TransferRecovery::FoundPlace::status(const std::string& name) const {
    struct stat status {};
    if (fstatat(folder(), name.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0) return status;
    if (errno == ENOENT) return std::nullopt;
    throw std::system_error(lastSystemError(), place->folder.pathOf(name));
}

TransferRecovery::TransferRecovery(FileJournal& journal, const InterruptedTransfer& transfer,
                                   OpenFolders& folders)
    : journal_(journal), transfer_(transfer), folders_(folders),
      source_(folders, transfer.source, transfer.sourceFolder),
      target_(folders, transfer.staged, transfer.targetFolder),
      claimed_(lastPathComponent(transfer.claimed)) {}

std::optional<RecoveryOutcome> TransferRecovery::look(const std::stop_token& stop) {
    if (!source_.place) return notNow();
    if (target_.place && target_.hasItem()) return removeCopy(stop);
    if (!target_.isTheVeryFolder) return wait();
    if (!transfer_.isMove || transfer_.destination.empty()) return nothingToDo();
    dropSecondName();
    if (isClaimed()) return compare(claimed_, stop);
    if (!source_.isTheVeryFolder) return notNow();
    return source_.hasItem() ? compare(ownName(), stop) : nothingToDo();
}

RecoveryOutcome TransferRecovery::notDurable(std::error_code reason) const {
    return failed("Could not finish " + what() + ", as a power cut may undo", transfer_.destination, reason);
}

void TransferRecovery::announceRemoval() {
    notes_.emplace(journal_, *source_.place, transfer_);
    notes_->keepOpen();
    hidden_ = name_;
    if (name_ != ownName()) return;
    hidden_ = hiddenName("moved");
    notes_->claiming(hidden_);
}

RecoveryOutcome TransferRecovery::removeSource() {
    if (name_ == ownName()) {
        const auto status = source_.status(name_);
        if (!status) return nothingToDo();
        if (!EntryStamp(*status).isUnchanged(same_.item.front().stamp))
            return keepBoth(name_, "it has changed");
        if (auto error = renameWithoutReplacing(source_.folder(), name_, source_.folder(), hidden_))
            return later("it could not be removed: " + error.message(), name_);
    }
    folders_.noteChange(source_.place->folder);
    // The user may have taken the copy away since it was compared.
    const auto copyIsThere = [this] {
        return checkEntries({target_.folder(), lastPathComponent(transfer_.destination)}, same_.other);
    };
    const auto removed = removeClaimed(*source_.place, hidden_, same_.item, *notes_, copyIsThere);
    if (!removed) {
        const RemovalError& error = removed.error();
        if (!error.isPartlyRemoved && isDifference(error.code))
            return keepBoth(hidden_, "it or its copy has changed");
        return later("it could not be removed: " + error.code.message(), hidden_);
    }
    return {true, "Finished " + what() + " to folder " + target_.place->folder.path()};
}

std::string TransferRecovery::what() const {
    return std::string("an interrupted ") + (transfer_.isMove ? "move" : "copy") + " of file " + ownName();
}

std::string TransferRecovery::whereItIs() const {
    return (transfer_.removing ? "what is left of it is in folder " : "it is still in folder ") +
           source_.place->folder.path();
}

/// Until the target folder is there again. A source that is hidden meanwhile can be found by its user.
RecoveryOutcome TransferRecovery::wait() const {
    if (!isClaimed()) return notNow();
    return later("folder " + parentPath(transfer_.destination) + " is not there", claimed_);
}

/// Where a file system cannot rename without replacing, the hidden name may be there besides the own one:
/// of an empty folder, or of the same file.
void TransferRecovery::dropSecondName() const {
    if (claimed_.empty()) return;
    const auto own = source_.status(ownName());
    const auto hidden = source_.status(claimed_);
    if (!own || !hidden || own->st_ino != transfer_.sourceInode) return;
    if (S_ISDIR(hidden->st_mode))
        unlinkat(source_.folder(), claimed_.c_str(), AT_REMOVEDIR);
    else if (own->st_dev == hidden->st_dev && own->st_ino == hidden->st_ino)
        unlinkat(source_.folder(), claimed_.c_str(), 0);
}

RecoveryOutcome TransferRecovery::removeCopy(const std::stop_token& stop) const {
    const std::string& name = target_.place->name;
    const std::string kept = "Kept \"" + transfer_.staged + "\", left by " + what() + ", because ";
    if (!source_.hasItem())
        return source_.isTheVeryFolder ? RecoveryOutcome{true, kept + "the file is gone"} : notNow();
    const auto compared = compareTrees(
        {{target_.folder(), name}, {source_.folder(), ownName()}, FileMatch::Beginning, {}}, stop);
    if (stop.stop_requested()) return notNow();
    if (!compared) return {isDifference(compared.error().code), kept + "it " + reasonOf(compared.error())};
    // Exactly what was compared: nothing that came to it since.
    if (auto error = removeLogged(target_.folder(), name, compared->item))
        return failed("Could not remove what " + what() + " left,", transfer_.staged, error);
    return {true,
            "Cleaned up after " + what() + ", which is still in folder " + source_.place->folder.path()};
}

/// `name` is the source's own one or the hidden one.
std::optional<RecoveryOutcome> TransferRecovery::compare(const std::string& name,
                                                         const std::stop_token& stop) {
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
    auto compared = compareTrees(
        {{source_.folder(), name}, {target_.folder(), copy}, FileMatch::Same, unchangedSince}, stop);
    if (stop.stop_requested()) return notNow();
    if (!compared) {
        const std::string why = "its copy in folder " + folder + ' ' + reasonOf(compared.error());
        return isDifference(compared.error().code) ? keepBoth(name, why) : later(why, name);
    }
    name_ = name;
    same_ = std::move(*compared);
    return std::nullopt;
}

/// The next start has another try.
RecoveryOutcome TransferRecovery::later(const std::string& why, const std::string& name) const {
    return {false, "Could not finish " + what() + " yet, because " + why + "; until then it is \"" +
                       source_.place->folder.pathOf(name) + '"'};
}

RecoveryOutcome TransferRecovery::keepBoth(const std::string& name, const std::string& why) const {
    if (name != ownName()) {
        if (auto error = renameWithoutReplacing(source_.folder(), name, source_.folder(), ownName()))
            return failed("Could not give back its name to what is left of " + what() + ",",
                          source_.place->folder.pathOf(name), error);
    }
    return {true, "Did not finish " + what() + ", because " + why + "; " + whereItIs()};
}

} // namespace brimwick
