#include "fakes/TemporaryFolder.h"
#include "model/LinkCounts.h"
#include "platform/ports/FileDescriptor.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace brimwick {

TEST(LinkCounts, ALinkCountSaysHowManySubfoldersThereAre) {
    EXPECT_EQ(subfoldersByLinkCount(2), 0U);
    EXPECT_EQ(subfoldersByLinkCount(5), 3U);
}

TEST(LinkCounts, ALinkCountBelowTwoSaysNothing) {
    EXPECT_FALSE(subfoldersByLinkCount(1));
    EXPECT_FALSE(subfoldersByLinkCount(0));
}

TEST(LinkCounts, ADeviceIsUnknownUntilAFolderOnItWasLookedAt) {
    const TemporaryFolder folder;
    const FileDescriptor directory(open(folder.path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    struct stat status {};
    ASSERT_EQ(fstat(directory.get(), &status), 0);
    LinkCounts linkCounts;
    EXPECT_FALSE(linkCounts.areKeptOn(status.st_dev));
    const bool kept = linkCounts.areKeptOn(directory.get(), status.st_dev);
    EXPECT_EQ(linkCounts.areKeptOn(status.st_dev), kept);
    EXPECT_FALSE(linkCounts.areKeptOn(status.st_dev + 1));
}

TEST(LinkCounts, AFileSystemWithoutThemKeepsNone) {
    const FileDescriptor directory(open("/proc", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    LinkCounts linkCounts;
    EXPECT_FALSE(linkCounts.areKeptOn(directory.get(), 1));
}

} // namespace brimwick
