#pragma once

#include "actions/FileError.h"
#include "actions/FolderMark.h"
#include "model/PathText.h"
#include "platform/ports/FileDescriptor.h"

#include <tl/expected.hpp>

#include <memory>
#include <string>
#include <vector>

namespace brimwick {

/// A folder held open, so that whatever is renamed around it, the work goes on in this very folder. Copies
/// share it.
class OpenFolder {
  public:
    /// Follows symbolic links. A folder that may be written but not listed can be opened too.
    static tl::expected<OpenFolder, FileError> open(const std::string& path);

    int descriptor() const { return opened_->descriptor.get(); }
    const std::string& path() const { return opened_->path; }
    const FolderMark& mark() const { return opened_->mark; }
    std::string pathOf(const std::string& name) const { return joinPath(path(), name); }
    /// Makes the names in the folder durable. Succeeds where the file system has no such notion.
    [[nodiscard]] std::error_code sync() const;
    /// Makes everything in the file system of the folder durable, the folder's names too.
    [[nodiscard]] std::error_code syncFileSystem() const;
    /// Whether this is the folder of that device and inode, or lies anywhere below it.
    tl::expected<bool, std::error_code> isAtOrBelow(dev_t device, ino_t inode) const;

  private:
    struct Opened {
        FileDescriptor descriptor;
        std::string path;
        FolderMark mark;
        bool listable;
    };
    explicit OpenFolder(std::shared_ptr<const Opened> opened) : opened_(std::move(opened)) {}

    std::shared_ptr<const Opened> opened_;
};

/// A name in an open folder, taken or not.
struct ItemPlace {
    OpenFolder folder;
    std::string name;

    static tl::expected<ItemPlace, FileError> open(const std::string& path);
    std::string path() const { return folder.pathOf(name); }
};

/// Opens a folder in another one; a symbolic link to a folder is none. No descriptor when it fails, and errno
/// says why.
FileDescriptor openFolderIn(int parent, const std::string& name);

/// The names in a folder, sorted, without "." and "..".
tl::expected<std::vector<std::string>, std::error_code> namesInFolder(int folder);

/// Flushes a descriptor; file systems without the notion count as flushed.
[[nodiscard]] std::error_code syncDescriptor(int descriptor);

} // namespace brimwick
