#pragma once

#include "actions/FileTransfer.h"
#include "actions/OpenFolders.h"
#include "actions/TransferProgress.h"

#include <tl/expected.hpp>

#include <chrono>
#include <cstdint>
#include <future>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <unordered_set>
#include <vector>

namespace brimwick {

/// What an action does to each file.
enum class FileOperation {
    Move,
    Copy,
    Trash ///< the undoing of a copy
};

/// One run of an action over its files, in their order, up to the first that fails. Knows nothing of the
/// user: what it did is fetched from it.
class ActionRun {
  public:
    struct File {
        std::string path;
        std::string name;
    };
    struct Report {
        std::string name;
        /// The path to record for the file, or why it was not handled; the last report then.
        tl::expected<std::string, FileError> path;
    };

    /// `folder` is where the files go, or came from when they are trashed.
    ActionRun(FileOperation operation, std::vector<File> files, std::string folder,
              const std::string& realHomeDirectory, FileJournal& journal);

    /// Handles the files. Files that cannot be read are left out. On any thread, one at a time in the whole
    /// process.
    void perform();
    /// What has become of files since the last call, in their order. Any thread.
    std::vector<Report> takeReports();
    TransferProgress& progress() { return progress_; }

  private:
    using Clock = std::chrono::steady_clock;

    /// Copied on another thread, while those before them are finished.
    struct CopiesUnderWay {
        std::vector<std::size_t> numbers; ///< of the files
        std::unique_ptr<CopyBatch> batch;
        std::future<void> copied; ///< is waited for when it goes
    };

    void performAll();
    void countBytes();
    bool isReadable(const File& file);
    bool goesByCopy(const File& file) const;
    bool canJoinCopies(const File& file) const;
    bool enoughCopiesWait(std::size_t next) const;
    bool startCopies(std::launch policy);
    bool finishCopies();
    bool finish(CopiesUnderWay copies);
    std::string abandonCopies();
    std::string destinationOf(const File& file) const;
    FileTransfer::Item itemOf(const File& file) const;
    tl::expected<std::string, FileError> handle(const File& file) const;
    bool finish(Report report);
    bool makeDurable();

    FileOperation operation_;
    std::vector<File> files_;
    std::string folder_;
    std::string realHomeDirectory_;
    TransferProgress progress_;
    OpenFolders folders_;
    FileTransfer transfer_;
    /// In bytes, of each file that is to be copied.
    std::vector<std::int64_t> sizes_;
    /// Numbers of files that wait to be copied together.
    std::vector<std::size_t> waiting_;
    std::int64_t bytesOfWaiting_ = 0;
    std::optional<CopiesUnderWay> underWay_;
    int batches_ = 0; ///< that were full
    /// Of all since nothing was under way.
    std::unordered_set<std::string> pathsOfCopies_;
    std::string folderOfCopies_;
    /// What was handled and may not be durable yet.
    std::vector<Report> handled_;
    Clock::time_point durable_; ///< when all was, lately
    std::mutex mutex_;
    std::vector<Report> reports_;
};

} // namespace brimwick
