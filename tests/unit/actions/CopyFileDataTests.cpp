#include "actions/CopyFileData.h"
#include "platform/ports/FileDescriptor.h"

#include <gtest/gtest.h>

#include "unit/actions/FileFacts.h"

namespace brimwick {

namespace {

class CopyFileData : public testing::Test {
  protected:
    std::error_code copyAsIfOfSize(off_t size) {
        const FileDescriptor from(open((folder / "from").c_str(), O_RDONLY | O_CLOEXEC));
        const FileDescriptor to(open((folder / "to").c_str(), O_RDWR | O_CREAT | O_TRUNC | O_CLOEXEC, 0600));
        struct stat told = statusOf(folder / "from");
        told.st_size = size;
        return copyFileData(from.get(), to.get(), told, copy, progress);
    }

    TemporaryFolder folder;
    TransferProgress progress;
    struct stat copy {};
};

TEST_F(CopyFileData, CopiesWhatTheStatusTells) {
    folder.makeFile("from", "12345");
    EXPECT_FALSE(copyAsIfOfSize(5));
    EXPECT_EQ(TemporaryFolder::read(folder / "to"), "12345");
    EXPECT_EQ(progress.bytes(), 5);
    EXPECT_EQ(copy.st_ino, statusOf(folder / "to").st_ino);
    EXPECT_EQ(copy.st_size, 5);
}

TEST_F(CopyFileData, FailsWhenTheFileIsLongerThanItsStatusTells) {
    folder.makeFile("from", "12345");
    EXPECT_TRUE(copyAsIfOfSize(4));
    EXPECT_TRUE(copyAsIfOfSize(0));
}

TEST_F(CopyFileData, FailsWhenTheFileIsShorterThanItsStatusTells) {
    folder.makeFile("from", "12345");
    EXPECT_TRUE(copyAsIfOfSize(6));
}

/// Which the kernel copies.
TEST_F(CopyFileData, FailsInTheSameWaysForALargeFile) {
    const std::string content(1'000'000, 'x');
    folder.makeFile("from", content);
    EXPECT_TRUE(copyAsIfOfSize(999'999));
    EXPECT_TRUE(copyAsIfOfSize(500'000));
    EXPECT_TRUE(copyAsIfOfSize(1'000'001));
    EXPECT_FALSE(copyAsIfOfSize(1'000'000));
    EXPECT_EQ(TemporaryFolder::read(folder / "to"), content);
}

/// Its status says that it is empty.
TEST_F(CopyFileData, FailsForAFileThatHidesItsSize) {
    const FileDescriptor from(open("/proc/self/status", O_RDONLY | O_CLOEXEC));
    const FileDescriptor to(open((folder / "to").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
    struct stat told {};
    ASSERT_EQ(fstat(from.get(), &told), 0);
    ASSERT_EQ(told.st_size, 0);
    EXPECT_TRUE(copyFileData(from.get(), to.get(), told, copy, progress));
}

} // namespace

} // namespace brimwick
