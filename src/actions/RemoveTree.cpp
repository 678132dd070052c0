#include "actions/RemoveTree.h"

#include "actions/FolderCursor.h"
#include "actions/SystemError.h"
#include "actions/TreeWalk.h"

#include <fcntl.h>

namespace brimwick {

namespace {

std::error_code unlinkName(int folder, const std::string& name, int flags) {
    return unlinkat(folder, name.c_str(), flags) == 0 ? std::error_code() : lastSystemError();
}

std::error_code makeWritable(int folder) {
    struct stat status {};
    if (fstat(folder, &status) != 0) return lastSystemError();
    if ((status.st_mode & S_IRWXU) == S_IRWXU) return {};
    return fchmod(folder, (status.st_mode & 07777U) | S_IRWXU) == 0 ? std::error_code() : lastSystemError();
}

class Remover : public TreeVisitor {
  public:
    std::error_code visitEntry(int parent, const std::string& name, const struct stat&) override {
        return unlinkName(parent, name, 0);
    }
    std::error_code enterFolder(int folder, const std::string&, const struct stat&) override {
        return makeWritable(folder);
    }
    std::error_code leftFolder(int parent, const std::string& name) override {
        return unlinkName(parent, name, AT_REMOVEDIR);
    }
};

std::error_code removeEntriesOf(FolderCursor& cursor, const CopyLog& log) {
    const auto leaveOne = [&cursor]() -> std::error_code {
        const std::string left = cursor.name();
        if (auto error = cursor.leave()) return error;
        return unlinkName(cursor.folder(), left, AT_REMOVEDIR);
    };
    if (auto error = makeWritable(cursor.folder())) return error;
    for (auto entry = log.begin() + 1; entry != log.end(); ++entry) {
        while (cursor.depth() >= entry->depth) {
            if (auto error = leaveOne()) return error;
        }
        if (!entry->stamp.isFolder()) {
            if (auto error = unlinkName(cursor.folder(), entry->name, 0)) return error;
            continue;
        }
        if (auto error = cursor.enter(entry->name)) return error;
        if (auto error = makeWritable(cursor.folder())) return error;
    }
    while (cursor.depth() > 0) {
        if (auto error = leaveOne()) return error;
    }
    return {};
}

} // namespace

std::error_code removeTree(int folder, const std::string& name) {
    if (unlinkat(folder, name.c_str(), 0) == 0 || errno == ENOENT) return {};
    if (errno != EISDIR && errno != EPERM) return lastSystemError();
    FileDescriptor root = openFolderIn(folder, name);
    if (!root) return lastSystemError();
    Remover remover;
    if (auto walked = walkTree(std::move(root), remover); !walked) return walked.error().code;
    return unlinkName(folder, name, AT_REMOVEDIR);
}

std::error_code removeLogged(int folder, const std::string& name, const CopyLog& log) {
    if (!log.front().stamp.isFolder()) return unlinkName(folder, name, 0);
    FileDescriptor root = openFolderIn(folder, name);
    if (!root) return lastSystemError();
    FolderCursor cursor(std::move(root));
    if (auto error = removeEntriesOf(cursor, log)) return error;
    return unlinkName(folder, name, AT_REMOVEDIR);
}

} // namespace brimwick
