#include "actions/CopyBatch.h"

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

#include <fcntl.h>

#include <memory>
#include <optional>

namespace brimwick {

namespace {

/// From so many on, one flush of the whole file system takes less time than one of each file.
constexpr std::size_t manyItems = 8;

} // namespace

/// One item on its way. Stays where it is in memory: its parts refer to each other.
struct CopyBatch::Item {
    Item(ItemPlace place, const struct stat& status, const PlannedTransfer& plan, bool isMove,
         FileJournal& journal)
        : source(std::move(place)), status(status), plan(plan),
          notes(journal, source, status.st_ino, isMove) {}

    ItemPlace source;
    struct stat status;
    const PlannedTransfer& plan;
    JournalEntry notes;
    std::string hiddenName = brimwick::hiddenName("part");
    std::optional<StagedCopy> staged;
    std::string path; ///< in the end
};

CopyBatch::CopyBatch(OpenFolder target, std::vector<PlannedTransfer> planned, bool isMove,
                     TransferContext context)
    : target_(std::move(target)), planned_(std::move(planned)), isMove_(isMove), context_(context),
      verb_(isMove ? "move" : "copy") {}

CopyBatch::~CopyBatch() {
    items_.clear();
    // Their ends, where the journal is not empty now.
    context_.journal.write();
}

tl::expected<std::unique_ptr<CopyBatch>, FileError> CopyBatch::plan(std::vector<PlannedTransfer> planned,
                                                                    bool isMove, TransferContext context) {
    auto target = context.folders.open(parentPath(planned.front().destination.path));
    if (!target) return tl::unexpected(target.error());
    std::unique_ptr<CopyBatch> batch(new CopyBatch(std::move(*target), std::move(planned), isMove, context));
    batch->announceAll();
    return batch;
}

CopyBatch::Results CopyBatch::finish() {
    makeCopiesDurable();
    nameAll();
    makeNamesDurable();
    if (isMove_) removeSources();

    Results results;
    for (const auto& item : items_) results.emplace_back(item->path);
    if (failure_) {
        failure_->description += leftBehind_;
        results.push_back(tl::unexpected(std::move(*failure_)));
    }
    return results;
}

std::string CopyBatch::abandon() {
    discardFrom(0);
    return leftBehind_;
}

void CopyBatch::announceAll() {
    for (const PlannedTransfer& plan : planned_) {
        if (auto announced = announce(plan); !announced) {
            failure_ = std::move(announced.error());
            break;
        }
    }
    context_.journal.flush();
}

tl::expected<void, FileError> CopyBatch::announce(const PlannedTransfer& plan) {
    auto source = context_.folders.openPlace(plan.source);
    if (!source) return tl::unexpected(source.error());
    const auto status = statusUnlessInsideItself(verb_, *source, target_);
    if (!status) return tl::unexpected(status.error());
    if (isMove_) {
        if (auto error = checkRemovable(source->folder, *status)) return tl::unexpected(failed(plan, error));
    }
    items_.push_back(std::make_unique<Item>(std::move(*source), *status, plan, isMove_, context_.journal));
    items_.back()->notes.staging(target_, items_.back()->hiddenName);
    return {};
}

void CopyBatch::copyAll() {
    for (std::size_t i = 0; i < items_.size(); ++i) {
        Item& item = *items_[i];
        context_.progress.setItem(item.source.name);
        const bool flushedTogether = items_.size() >= manyItems || S_ISDIR(item.status.st_mode);
        if (auto copied = copy(item, flushedTogether); !copied) return failAt(i, std::move(copied.error()));
    }
}

tl::expected<void, FileError> CopyBatch::copy(Item& item, bool flushedTogether) {
    const Flush flush = flushedTogether ? flushFor(target_.mark()) : Flush::AtOnce;
    needsFlush_ = needsFlush_ || flush == Flush::StartedOnly;
    if (auto fits = checkFreeSpace(item.source, target_, item.plan.size, context_.progress); !fits)
        return fits;
    auto staged = StagedCopy::make(item.source, item.status, target_, item.hiddenName, flush, item.notes,
                                   context_.progress);
    if (!staged) {
        noteIfLeftBehind(item);
        return tl::unexpected(std::move(staged.error()));
    }
    item.staged.emplace(std::move(*staged));
    return {};
}

void CopyBatch::makeCopiesDurable() {
    if (items_.empty() || !needsFlush_) return;
    if (auto error = target_.syncFileSystem()) failAt(0, failed(items_.front()->plan, error));
    // It may have taken long, and all that is flushed together is in work.
    if (auto error = context_.progress.checkCancelled(); error && !items_.empty())
        failAt(0, failed(items_.front()->plan, error));
}

void CopyBatch::nameAll() {
    for (std::size_t i = 0; i < items_.size(); ++i) {
        Item& item = *items_[i];
        if (auto error = item.staged->announce(lastPathComponent(item.plan.destination.path)))
            failAt(i, failed(item.plan, error));
    }
    context_.journal.write();
    for (std::size_t i = 0; i < items_.size(); ++i) {
        Item& item = *items_[i];
        auto path = takeFreeName(item.plan.destination,
                                 [&item](const std::string& name) { return item.staged->rename(name); });
        if (!path) return failAt(i, failed(item.plan, path.error()));
        item.path = std::move(*path);
    }
}

void CopyBatch::makeNamesDurable() {
    if (items_.empty()) return;
    const std::error_code error = target_.sync();
    if (!error) return;
    const char* what = isMove_ ? "Copied, but not removed, as a power cut may undo the copy,"
                               : "Copied, but a power cut may undo it,";
    const Item& first = *items_.front();
    failAfterNaming(0, fileError(what, first.source.path(), first.path, error));
}

void CopyBatch::removeSources() {
    std::vector<std::string> claimed;
    for (const auto& item : items_) {
        claimed.push_back(hiddenName("moved"));
        item->notes.claiming(claimed.back());
    }
    context_.journal.flush();
    for (std::size_t i = 0; i < items_.size(); ++i) {
        Item& item = *items_[i];
        auto removed = claimAndRemove(item.source, claimed[i], item.staged->log(), item.notes);
        context_.folders.noteChange(item.source.folder);
        if (!removed) return failAfterNaming(i, std::move(removed.error()));
    }
}

FileError CopyBatch::failed(const PlannedTransfer& plan, std::error_code reason) const {
    return fileError("Could not " + verb_, plan.source, plan.destination.path, reason);
}

/// That item and those after it lose their hidden copies.
void CopyBatch::failAt(std::size_t index, FileError error) {
    discardFrom(index);
    failure_ = std::move(error);
}

void CopyBatch::discardFrom(std::size_t index) {
    for (std::size_t i = index; i < items_.size(); ++i)
        if (items_[i]->staged && items_[i]->staged->discard()) noteIfLeftBehind(*items_[i]);
    items_.resize(index);
}

void CopyBatch::noteIfLeftBehind(const Item& item) {
    struct stat status {};
    if (fstatat(target_.descriptor(), item.hiddenName.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0 ||
        errno != ENOENT)
        leftBehind_ += " (left behind: \"" + target_.pathOf(item.hiddenName) + "\")";
}

/// The same when those after it have copies with names already.
void CopyBatch::failAfterNaming(std::size_t index, FileError error) {
    for (std::size_t i = index + 1; i < items_.size(); ++i)
        if (!takeBack(*items_[i])) error.description += " (and kept the copy \"" + items_[i]->path + "\")";
    failAt(index, std::move(error));
}

/// Removes a copy that has its name, as long as it still is a copy that nobody has open. False when it
/// was left.
bool CopyBatch::takeBack(Item& item) const {
    const std::string name = lastPathComponent(item.path);
    const std::string hidden = hiddenName("part");
    const int folder = target_.descriptor();
    const NameInFolder original{item.source.folder.descriptor(), item.source.name};
    item.notes.staging(target_, hidden);
    item.notes.write();
    if (renameWithoutReplacing(folder, name, folder, hidden)) return false;
    const auto same = compareTrees({{folder, hidden}, original, FileMatch::Same, {}}, {});
    const auto originalIsThere = [&] { return checkEntries(original, same->other); };
    const ItemPlace copy{target_, name};
    const auto removed = same ? removeClaimed(copy, hidden, same->item, item.notes, originalIsThere)
                              : tl::unexpected(RemovalError{same.error().code, false});
    if (removed) {
        if (item.plan.destination.withdraw) item.plan.destination.withdraw(name);
        return true;
    }
    // What is left of it is no copy to be shown; the next start has another try.
    if (removed.error().isPartlyRemoved || renameWithoutReplacing(folder, hidden, folder, name)) {
        item.path = target_.pathOf(hidden);
        item.notes.keepOpen();
    }
    return false;
}

tl::expected<std::string, FileError> transferByCopy(PlannedTransfer planned, bool isMove,
                                                    const TransferContext& context) {
    std::vector<PlannedTransfer> one;
    one.push_back(std::move(planned));
    auto batch = CopyBatch::plan(std::move(one), isMove, context);
    if (!batch) return tl::unexpected(batch.error());
    (*batch)->copyAll();
    return (*batch)->finish().front();
}

} // namespace brimwick
