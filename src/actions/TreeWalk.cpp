#include "actions/TreeWalk.h"

#include "actions/FolderCursor.h"
#include "actions/OpenFolder.h"
#include "actions/SystemError.h"

#include <fcntl.h>

#include <vector>

namespace brimwick {

namespace {

class Walk {
  public:
    Walk(FileDescriptor root, TreeVisitor& visitor) : cursor_(std::move(root)), visitor_(visitor) {}

    tl::expected<void, TreeWalkError> run() {
        if (auto error = enterCurrentFolder()) return failed(error);
        while (!folders_.empty()) {
            Folder& folder = folders_.back();
            const bool finished = folder.next == folder.names.size();
            const std::string name = finished ? std::string() : folder.names[folder.next++];
            if (auto error = finished ? leaveCurrentFolder() : visit(name)) return failed(error, name);
        }
        return {};
    }

  private:
    struct Folder {
        std::vector<std::string> names;
        std::size_t next = 0;
        struct stat status {};
    };

    std::error_code visit(const std::string& name) {
        struct stat status {};
        if (fstatat(cursor_.folder(), name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0)
            return lastSystemError();
        if (!S_ISDIR(status.st_mode)) return visitor_.visitEntry(cursor_.folder(), name, status);
        if (auto error = cursor_.enter(name)) return error;
        return enterCurrentFolder();
    }

    std::error_code enterCurrentFolder() {
        Folder folder;
        if (fstat(cursor_.folder(), &folder.status) != 0) return lastSystemError();
        if (auto error = visitor_.enterFolder(cursor_.folder(), cursor_.name(), folder.status)) return error;
        auto names = namesInFolder(cursor_.folder());
        if (!names) return names.error();
        folder.names = std::move(*names);
        folders_.push_back(std::move(folder));
        return {};
    }

    std::error_code leaveCurrentFolder() {
        if (auto error = visitor_.leaveFolder(cursor_.folder(), folders_.back().status)) return error;
        folders_.pop_back();
        if (cursor_.depth() == 0) return {};
        const std::string name = cursor_.name();
        if (auto error = cursor_.leave()) return error;
        return visitor_.leftFolder(cursor_.folder(), name);
    }

    tl::unexpected<TreeWalkError> failed(std::error_code error, const std::string& name = {}) const {
        // A folder that failed after it was entered is the current one already.
        const bool entered = name.empty() || cursor_.depth() == folders_.size();
        return tl::unexpected(
            TreeWalkError{error, entered ? cursor_.relativePath() : cursor_.relativePathOf(name)});
    }

    FolderCursor cursor_;
    TreeVisitor& visitor_;
    std::vector<Folder> folders_;
};

} // namespace

tl::expected<void, TreeWalkError> walkTree(FileDescriptor root, TreeVisitor& visitor) {
    return Walk(std::move(root), visitor).run();
}

} // namespace brimwick
