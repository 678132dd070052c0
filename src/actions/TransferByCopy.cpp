#include "actions/TransferByCopy.h"

#include "actions/CompareTrees.h"
#include "actions/CopyFolder.h"
#include "actions/FreeSpace.h"
#include "actions/HiddenName.h"
#include "actions/OpenFolders.h"
#include "actions/RemoveVerified.h"
#include "actions/RenameWithoutReplacing.h"
#include "actions/SourceStatus.h"
#include "actions/StagedCopy.h"
#include "actions/TransferProgress.h"

#include <memory>
#include <optional>

namespace brimwick {

namespace {

/// From so many on, one flush of the whole file system takes less time than one of each file.
constexpr std::size_t manyItems = 8;

/// One item on its way. Stays where it is in memory: its parts refer to each other.
struct ItemUnderWay {
    ItemUnderWay(ItemPlace place, const PlannedTransfer& plan, bool isMove, FileJournal& journal)
        : source(std::move(place)), destination(plan.destination), size(plan.size),
          notes(journal, source, isMove) {}

    ItemPlace source;
    const Destination& destination;
    std::int64_t size;
    JournalEntry notes;
    std::string hiddenName = brimwick::hiddenName("part");
    std::optional<StagedCopy> staged;
    std::string path; ///< in the end
};

class Batch {
  public:
    Batch(const OpenFolder& target, bool isMove, const TransferContext& context)
        : target_(target), isMove_(isMove), context_(context), verb_(isMove ? "move" : "copy") {}

    std::vector<tl::expected<std::string, FileError>> run(const std::vector<PlannedTransfer>& planned) {
        announce(planned);
        copyAll(planned.size() >= manyItems ? flushFor(target_.descriptor()) : Flush::AtOnce);
        makeCopiesDurable();
        nameAll();
        makeNamesDurable();
        if (isMove_) removeSources();

        std::vector<tl::expected<std::string, FileError>> results;
        for (const auto& item : items_) results.emplace_back(item->path);
        if (failure_) results.push_back(tl::unexpected(std::move(*failure_)));
        return results;
    }

  private:
    void announce(const std::vector<PlannedTransfer>& planned) {
        for (const PlannedTransfer& plan : planned) {
            auto source = context_.folders.openPlace(plan.source);
            if (!source) {
                failure_ = source.error();
                break;
            }
            items_.push_back(
                std::make_unique<ItemUnderWay>(std::move(*source), plan, isMove_, context_.journal));
            items_.back()->notes.staging(target_, items_.back()->hiddenName);
        }
        context_.journal.flush();
    }

    void copyAll(Flush flush) {
        for (std::size_t i = 0; i < items_.size(); ++i) {
            context_.progress.setItem(items_[i]->source.name);
            if (auto copied = copy(*items_[i], flush); !copied) return failAt(i, copied.error());
        }
    }

    tl::expected<void, FileError> copy(ItemUnderWay& item, Flush flush) {
        const auto status = statusUnlessInsideItself(verb_, item.source, target_);
        if (!status) return tl::unexpected(status.error());
        if (isMove_) {
            if (auto error = checkRemovable(item.source)) return tl::unexpected(failed(item, error));
        }
        if (S_ISDIR(status->st_mode)) flush = flushFor(target_.descriptor());
        needsFlush_ = needsFlush_ || flush == Flush::StartedOnly;
        if (auto fits = checkFreeSpace(item.source, target_, item.size, context_.progress); !fits)
            return fits;
        auto staged =
            StagedCopy::make(item.source, target_, item.hiddenName, flush, item.notes, context_.progress);
        if (!staged) return tl::unexpected(staged.error());
        item.staged.emplace(std::move(*staged));
        return {};
    }

    void makeCopiesDurable() {
        if (items_.empty() || !needsFlush_) return;
        if (auto error = target_.syncFileSystem()) failAt(0, failed(*items_.front(), error));
    }

    void nameAll() {
        for (std::size_t i = 0; i < items_.size(); ++i) {
            ItemUnderWay& item = *items_[i];
            auto path = takeFreeName(item.destination,
                                     [&item](const std::string& name) { return item.staged->rename(name); });
            if (!path) return failAt(i, failed(item, path.error()));
            item.path = std::move(*path);
        }
    }

    void makeNamesDurable() {
        if (items_.empty()) return;
        const std::error_code error = target_.sync();
        if (!error) return;
        const char* what = isMove_ ? "Copied, but not removed, as a power cut may undo the copy,"
                                   : "Copied, but a power cut may undo it,";
        const ItemUnderWay& first = *items_.front();
        failAfterNaming(0, fileError(what, first.source.path(), first.path, error));
    }

    void removeSources() {
        std::vector<std::string> claimed;
        for (const auto& item : items_) {
            claimed.push_back(brimwick::hiddenName("moved"));
            item->notes.claiming(claimed.back());
        }
        context_.journal.flush();
        for (std::size_t i = 0; i < items_.size(); ++i) {
            ItemUnderWay& item = *items_[i];
            auto removed = claimAndRemove(item.source, claimed[i], item.staged->log(), item.notes);
            context_.folders.noteChange(item.source.folder);
            if (!removed) return failAfterNaming(i, std::move(removed.error()));
        }
    }

    FileError failed(const ItemUnderWay& item, std::error_code reason) const {
        return fileError("Could not " + verb_, item.source.path(), item.destination.path, reason);
    }

    /// That item and those after it lose their hidden copies.
    void failAt(std::size_t index, FileError error) {
        for (std::size_t i = index; i < items_.size(); ++i)
            if (items_[i]->staged && items_[i]->staged->discard())
                error.description += " (left behind: \"" + target_.pathOf(items_[i]->hiddenName) + "\")";
        failure_ = std::move(error);
        items_.resize(index);
    }

    /// The same when those after it have copies with names already.
    void failAfterNaming(std::size_t index, FileError error) {
        for (std::size_t i = index + 1; i < items_.size(); ++i)
            if (!takeBack(*items_[i]))
                error.description += " (and kept the copy \"" + items_[i]->path + "\")";
        failAt(index, std::move(error));
    }

    /// Removes a copy that has its name, as long as it still is a copy that nobody has open. False when it
    /// was left.
    bool takeBack(ItemUnderWay& item) const {
        const std::string name = lastPathComponent(item.path);
        const std::string hidden = brimwick::hiddenName("part");
        const int folder = target_.descriptor();
        const NameInFolder original{item.source.folder.descriptor(), item.source.name};
        item.notes.staging(target_, hidden);
        if (renameWithoutReplacing(folder, name, folder, hidden)) return false;
        const auto same = compareTrees({{folder, hidden}, original, FileMatch::Same, {}}, {});
        const auto originalIsThere = [&] { return checkEntries(original, same->other); };
        const ItemPlace copy{target_, name};
        const auto removed = same ? removeClaimed(copy, hidden, same->item, item.notes, originalIsThere)
                                  : tl::unexpected(RemovalError{same.error().code, false});
        if (removed) {
            if (item.destination.withdraw) item.destination.withdraw(name);
            return true;
        }
        // What is left of it is no copy to be shown; the next start has another try.
        if (removed.error().isPartlyRemoved || renameWithoutReplacing(folder, hidden, folder, name)) {
            item.path = target_.pathOf(hidden);
            item.notes.keepOpen();
        }
        return false;
    }

    const OpenFolder& target_;
    bool isMove_;
    const TransferContext& context_;
    std::string verb_;
    std::vector<std::unique_ptr<ItemUnderWay>> items_;
    bool needsFlush_ = false;
    std::optional<FileError> failure_;
};

} // namespace

std::vector<tl::expected<std::string, FileError>>
transferByCopy(const std::vector<PlannedTransfer>& planned, bool isMove, const TransferContext& context) {
    const auto target = context.folders.open(parentPath(planned.front().destination.path));
    if (!target) return {tl::unexpected(target.error())};
    return Batch(*target, isMove, context).run(planned);
}

} // namespace brimwick
