#include "folder_events/ChildProcess.h"
#include "folder_events/FolderEventsTest.h"

#include <sys/mount.h>

namespace brimwick {

TEST_F(FolderEventsTest, TellsOfAMountBelowALinkThatLedNowhereAtTheStart) {
    const auto result = inChildWithOwnMounts([this] {
        const std::string media = folder_ / "media";
        const std::string link = folder_ / "link";
        std::filesystem::create_directory_symlink(media, link);
        roots_ = {link};
        start();
        folder_.makeFolder("media/disk");
        if (flagsUpTo(created) != Flags{created}) return 1;
        walk();
        const std::string disk = media + "/disk";
        if (mount("none", disk.c_str(), "tmpfs", 0, nullptr) != 0) return 77;
        if (flagsUpTo(created) != Flags{created}) return 2;
        stream_.reset();
        umount(disk.c_str());
        return 0;
    });
    if (!result) GTEST_SKIP() << "mounting takes root and a mount namespace";
    EXPECT_EQ(*result, 0);
}

} // namespace brimwick
