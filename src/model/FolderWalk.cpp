#include "model/FolderWalk.h"

#include "model/BWSelectedFileOrFolder.h"
#include "model/FolderListing.h"
#include "model/WalkOrder.h"

#include <fcntl.h>

#include <list>
#include <mutex>

namespace brimwick {
namespace {

/// The threads of one walk: each takes subtrees until none are left.
class Crew {
  public:
    Crew(const FolderNameObserver& observer, std::stop_token stop)
        : observer_(observer), stop_(std::move(stop)) {}

    /// False when told to stop. Throws what a thread of the crew threw.
    bool walk(unsigned threads) {
        inParallel(threads, [this](unsigned /*number*/) { takePart(); });
        return !stop_.stop_requested();
    }
    SubtreeExchange& exchange() { return exchange_; }
    WalkedSizes sizes() const {
        WalkedSizes sizes;
        for (const FolderFindings& findings : findings_) {
            sizes.folders += findings.size();
            sizes.nameBytes += findings.nameBytes();
        }
        return sizes;
    }

  private:
    void takePart() {
        try {
            SubtreeWalker walker(newFindings(), exchange_, observer_, stop_);
            while (Subtrees* const subtrees = exchange_.take()) {
                if (!walker.walk(*subtrees)) exchange_.close();
                exchange_.finish();
            }
        } catch (...) {
            exchange_.close();
            throw;
        }
    }
    FolderFindings& newFindings() {
        const std::lock_guard lock(mutex_);
        return findings_.emplace_back();
    }

    const FolderNameObserver& observer_;
    std::stop_token stop_;
    SubtreeExchange exchange_;
    std::mutex mutex_;
    std::list<FolderFindings> findings_;
};

} // namespace

FolderWalk::FolderWalk(FolderTree& folders, FolderNameObserver observer, std::stop_token stop,
                       unsigned threads)
    : folders_(folders), observer_(std::move(observer)), stop_(std::move(stop)), threads_(threads) {}

bool FolderWalk::addRootDirectoryAndSubFoldersToIndex(const std::string& rootPath) {
    const auto root = BWSelectedFileOrFolder::fileOrFolderWithPath(rootPath);
    const FolderNumber folder = folders_.addRoot(root.path(), root.name().value_or(""));
    if (!root.name()) return true;
    return deepEnumerateAllSubfoldersOfFolderWithPath(root.path(), folder);
}

bool FolderWalk::deepEnumerateAllSubfoldersOfFolderWithPath(const std::string& path, FolderNumber folder) {
    Subtrees all;
    // Without O_NOFOLLOW: a root may be a link.
    all.parent = openForListing(AT_FDCWD, path.c_str());
    if (all.parent) appendSubfolderNames(all.parent.get(), all.names);
    if (all.names.empty()) return !stop_.stop_requested();

    Crew crew(observer_, stop_);
    const Subtrees& walked = crew.exchange().give(std::move(all));
    if (!crew.walk(threads_)) return false;
    appendInOrder(walked, crew.sizes(), folder, folders_);
    return true;
}

} // namespace brimwick
