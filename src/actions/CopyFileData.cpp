#include "actions/CopyFileData.h"

#include "actions/SystemError.h"
#include "platform/ports/FileDescriptor.h"

#include <linux/fs.h>
#include <sys/ioctl.h>
#include <sys/stat.h>

#include <algorithm>
#include <vector>

namespace brimwick {

namespace {

constexpr std::size_t bufferSize = 256 * 1024;
/// So little is copied faster by way of a buffer than by the kernel, which prepares for more.
constexpr off_t littleData = off_t{128} << 10U;
/// What one call copies at most: the progress is told, and an end asked for, between two.
constexpr off_t mostAtOnce = off_t{8} << 20U;

std::error_code writeAll(int to, const char* data, std::size_t length, off_t offset) {
    while (length > 0) {
        const ssize_t written = pwrite(to, data, length, offset);
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) return lastSystemError();
        if (written == 0) return std::make_error_code(std::errc::io_error);
        data += written;
        length -= static_cast<std::size_t>(written);
        offset += written;
    }
    return {};
}

/// A whole file of little data; `size` is what it should be.
std::error_code copyLittle(int from, int to, off_t size, TransferProgress& progress) {
    const auto expected = static_cast<std::size_t>(size);
    std::vector<char> content(expected + 1);
    std::size_t length = 0;
    while (length < content.size()) {
        const ssize_t got =
            pread(from, content.data() + length, content.size() - length, static_cast<off_t>(length));
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) return lastSystemError();
        if (got == 0) break;
        length += static_cast<std::size_t>(got);
    }
    if (length < expected) return std::make_error_code(std::errc::no_message_available);
    if (length > expected) return std::make_error_code(std::errc::device_or_resource_busy);
    progress.addBytes(size);
    return writeAll(to, content.data(), expected, 0);
}

std::error_code copyThroughBuffer(int from, int to, off_t begin, off_t end, TransferProgress& progress) {
    std::vector<char> buffer(std::min(bufferSize, static_cast<std::size_t>(end - begin)));
    while (begin < end) {
        if (auto error = progress.checkCancelled()) return error;
        const ssize_t got =
            pread(from, buffer.data(), std::min(buffer.size(), static_cast<std::size_t>(end - begin)), begin);
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) return lastSystemError();
        if (got == 0) return std::make_error_code(std::errc::no_message_available);
        if (auto error = writeAll(to, buffer.data(), static_cast<std::size_t>(got), begin)) return error;
        begin += got;
        progress.addBytes(got);
    }
    return {};
}

bool kernelCannotCopyBetweenThese(int code) {
    return code == EXDEV || code == EINVAL || code == ENOSYS || code == EOPNOTSUPP || code == EPERM ||
           code == ETXTBSY;
}

std::error_code copyRange(int from, int to, off_t begin, off_t end, TransferProgress& progress) {
    while (begin < end) {
        if (auto error = progress.checkCancelled()) return error;
        off_t in = begin;
        off_t out = begin;
        const auto length = static_cast<std::size_t>(std::min(end - begin, mostAtOnce));
        const ssize_t copied = copy_file_range(from, &in, to, &out, length, 0);
        if (copied < 0 && errno == EINTR) continue;
        // Some file systems answer 0 although there is more to read.
        if (copied == 0 || (copied < 0 && kernelCannotCopyBetweenThese(errno)))
            return copyThroughBuffer(from, to, begin, end, progress);
        if (copied < 0) return lastSystemError();
        begin += copied;
        progress.addBytes(copied);
    }
    return {};
}

bool seekingIsUnsupported(int code) {
    return code == EINVAL || code == EOPNOTSUPP || code == ENOSYS;
}

std::error_code copyDataSegments(int from, int to, off_t size, TransferProgress& progress) {
    off_t offset = 0;
    while (offset < size) {
        off_t begin = lseek(from, offset, SEEK_DATA);
        if (begin < 0 && errno == ENXIO) {
            progress.addBytes(size - offset);
            break;
        }
        if (begin < 0) {
            if (!seekingIsUnsupported(errno)) return lastSystemError();
            begin = offset;
        }
        progress.addBytes(begin - offset);
        off_t end = lseek(from, begin, SEEK_HOLE);
        if (end < 0) {
            if (!seekingIsUnsupported(errno) && errno != ENXIO) return lastSystemError();
            end = size;
        }
        end = std::min(end, size);
        if (begin < end) {
            if (auto error = copyRange(from, to, begin, end, progress)) return error;
        }
        offset = std::max(begin, end);
    }
    return ftruncate(to, size) == 0 ? std::error_code() : lastSystemError();
}

/// Some file systems tell a size that is too small, as of what comes from elsewhere.
std::error_code checkEnd(int from, off_t size) {
    char more = 0;
    ssize_t got = 0;
    do got = pread(from, &more, 1, size);
    while (got < 0 && errno == EINTR);
    if (got < 0) return lastSystemError();
    return got == 0 ? std::error_code() : std::make_error_code(std::errc::device_or_resource_busy);
}

bool hasHoles(const struct stat& status) {
    constexpr off_t blockSize = 512;
    return status.st_blocks * blockSize < status.st_size;
}

std::error_code copyOwnBlocks(int from, int to, const struct stat& source, TransferProgress& progress) {
    const off_t size = source.st_size;
    if (!hasHoles(source) && size <= littleData) return copyLittle(from, to, size, progress);
    if (auto error = checkEnd(from, size)) return error;
    return hasHoles(source) ? copyDataSegments(from, to, size, progress)
                            : copyRange(from, to, 0, size, progress);
}

} // namespace

std::error_code copyFileData(int from, int to, const struct stat& source, struct stat& copy,
                             TransferProgress& progress) {
    if (auto error = progress.checkCancelled()) return error;
    // Whatever makes cloning impossible, copying shows whether it is serious.
    if (source.st_size > 0 && ioctl(to, FICLONE, from) == 0) {
        if (auto error = checkEnd(from, source.st_size)) return error;
        progress.addBytes(source.st_size);
    } else if (auto error = copyOwnBlocks(from, to, source, progress)) {
        return error;
    }
    if (fstat(to, &copy) != 0) return lastSystemError();
    return copy.st_size == source.st_size ? std::error_code() : std::make_error_code(std::errc::io_error);
}

} // namespace brimwick
