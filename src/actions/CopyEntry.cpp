#include "actions/CopyEntry.h"

#include "actions/CopyFileData.h"
#include "actions/CopyMetadata.h"
#include "actions/EntryStamp.h"
#include "actions/OpenFolder.h"
#include "actions/SystemError.h"
#include "platform/ports/FileDescriptor.h"

#include <fcntl.h>

namespace brimwick {

namespace {

constexpr off_t worthStarting = off_t{4} << 20U;

std::error_code flushFile(int descriptor, off_t size, Flush flush) {
    if (flush == Flush::AtOnce) return syncDescriptor(descriptor);
    // Only to spread the work: the flush of the whole file system reports what goes wrong. Small files are
    // written faster together.
    if (size >= worthStarting) sync_file_range(descriptor, 0, 0, SYNC_FILE_RANGE_WRITE);
    return {};
}

} // namespace

std::error_code copyRegularFile(const NameInFolder& from, const NameInFolder& to, Flush flush,
                                CopiedFile& file, TransferProgress& progress) {
    struct stat& read = file.source;
    // Not blocking, should the name have become a pipe since somebody looked.
    const FileDescriptor in(
        openat(from.folder, from.name.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    if (!in || fstat(in.get(), &read) != 0) return lastSystemError();
    if (!S_ISREG(read.st_mode)) return std::make_error_code(std::errc::device_or_resource_busy);

    FileDescriptor out(
        openat(to.folder, to.name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600));
    if (!out) return lastSystemError();
    if (auto error = copyFileData(in.get(), out.get(), read, file.copy, progress)) return error;
    if (auto error = copyMetadata(in.get(), out.get(), read, file.copy)) return error;

    struct stat after {};
    if (fstat(in.get(), &after) != 0) return lastSystemError();
    if (!EntryStamp(after).isUnchanged(EntryStamp(read)))
        return std::make_error_code(std::errc::device_or_resource_busy);

    if (auto error = flushFile(out.get(), read.st_size, flush)) return error;
    return out.close() ? std::error_code() : lastSystemError();
}

tl::expected<std::string, std::error_code> readLink(const NameInFolder& link) {
    std::string target(256, '\0');
    for (;;) {
        const ssize_t length = readlinkat(link.folder, link.name.c_str(), target.data(), target.size());
        if (length < 0) return tl::unexpected(lastSystemError());
        if (static_cast<std::size_t>(length) < target.size()) {
            target.resize(static_cast<std::size_t>(length));
            return target;
        }
        target.resize(target.size() * 2);
    }
}

std::error_code copySymbolicLink(const NameInFolder& from, const NameInFolder& to,
                                 const struct stat& status) {
    const auto target = readLink(from);
    if (!target) return target.error();
    if (symlinkat(target->c_str(), to.folder, to.name.c_str()) != 0) return lastSystemError();
    return copyLinkMetadata(to.folder, to.name, status);
}

} // namespace brimwick
