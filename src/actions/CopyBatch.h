#pragma once

#include "actions/Destination.h"
#include "actions/OpenFolder.h"
#include "actions/TransferContext.h"

#include <tl/expected.hpp>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace brimwick {

/// An item and where it shall lie.
struct PlannedTransfer {
    std::string source;
    Destination destination;
    /// What its files hold, in bytes, if that is known; 0 otherwise.
    std::int64_t size = 0;
};

/// Files, symbolic links (themselves) and whole folders that are copied into one folder, in which all
/// destinations lie, and whose sources are removed if they are to be moved. Replaces nothing: a taken name
/// makes it try the next one. Every item is copied under a hidden name first; all copies are made durable at
/// once and get their names in order; then the sources go, each if it still is what was copied.
///
/// One thread at a time; copyAll() may work while other batches are planned and finished. Whatever has no
/// name of its own in the end disappears with the batch.
class CopyBatch {
  public:
    using Results = std::vector<tl::expected<std::string, FileError>>;

    /// Looks at the items and notes them in the journal. An item that is refused ends the batch before it.
    static tl::expected<std::unique_ptr<CopyBatch>, FileError> plan(std::vector<PlannedTransfer> planned,
                                                                    bool isMove, TransferContext context);
    CopyBatch(const CopyBatch&) = delete;
    CopyBatch& operator=(const CopyBatch&) = delete;
    ~CopyBatch();

    /// Copies all items under hidden names, up to the first that fails.
    void copyAll();
    /// All the rest. What is removed is durable once the changed folders of the context are.
    ///
    /// The paths at which the items lie in the end, in their order, and in place of the first that failed the
    /// reason. That one and those after it are as they were, and nothing of them is left behind, unless the
    /// error says so.
    Results finish();
    /// Instead of finish(): all is as it was. What could not be removed, for the text of an error; usually
    /// nothing.
    std::string abandon();

    const std::vector<PlannedTransfer>& planned() const { return planned_; }
    bool isMove() const { return isMove_; }

  private:
    struct Item;

    CopyBatch(OpenFolder target, std::vector<PlannedTransfer> planned, bool isMove, TransferContext context);
    void announceAll();
    tl::expected<void, FileError> announce(const PlannedTransfer& plan);
    tl::expected<void, FileError> copy(Item& item, bool flushedTogether);
    void makeCopiesDurable();
    void nameAll();
    void makeNamesDurable();
    void removeSources();
    bool takeBack(Item& item) const;
    void failAt(std::size_t index, FileError error);
    void failAfterNaming(std::size_t index, FileError error);
    void discardFrom(std::size_t index);
    void noteIfLeftBehind(const Item& item);
    FileError failed(const PlannedTransfer& plan, std::error_code reason) const;

    OpenFolder target_;
    std::vector<PlannedTransfer> planned_;
    bool isMove_;
    TransferContext context_;
    std::string verb_;
    std::vector<std::unique_ptr<Item>> items_;
    bool needsFlush_ = false;
    std::optional<FileError> failure_;
    std::string leftBehind_; ///< for the text of an error
};

/// A batch of its own for one item.
tl::expected<std::string, FileError> transferByCopy(PlannedTransfer planned, bool isMove,
                                                    const TransferContext& context);

} // namespace brimwick
