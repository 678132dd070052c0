#pragma once

#include "actions/CopyEntry.h"
#include "actions/EntryStamp.h"
#include "actions/JournalEntry.h"
#include "actions/OpenFolder.h"
#include "actions/TransferProgress.h"

#include <tl/expected.hpp>

#include <string>

namespace brimwick {

/// A complete copy of an item under a hidden name in its target folder, waiting for its final name. It
/// disappears when it does not get one. The target folder and the notes must outlive it.
class StagedCopy {
  public:
    /// Copies a file, a symbolic link or a whole folder, whose status was read lately, under this name, which
    /// must be noted already. Fails without a trace, unless what there is cannot be removed.
    static tl::expected<StagedCopy, FileError> make(const ItemPlace& source, const struct stat& status,
                                                    const OpenFolder& target, std::string name, Flush flush,
                                                    JournalEntry& notes, TransferProgress& progress);
    StagedCopy(StagedCopy&& other) noexcept;
    StagedCopy& operator=(StagedCopy&&) = delete;
    ~StagedCopy();

    /// Notes the name that the copy shall get first. The journal must be written before it gets it.
    [[nodiscard]] std::error_code announce(const std::string& name);
    /// Gives the copy its final name; `file_exists` when the name is taken, and another one can be tried.
    [[nodiscard]] std::error_code rename(const std::string& name);
    /// Removes the copy, if it has not got its name.
    [[nodiscard]] std::error_code discard();
    /// Every entry that was copied, as it was when it was read.
    const CopyLog& log() const { return log_; }

  private:
    StagedCopy(const OpenFolder& target, std::string name, JournalEntry& notes)
        : target_(target), name_(std::move(name)), notes_(notes) {}
    const OpenFolder& target_;
    std::string name_; ///< empty when nothing is left to discard
    JournalEntry& notes_;
    CopyLog log_;
    struct stat status_ {}; ///< once it is known
    std::string announced_;
};

} // namespace brimwick
