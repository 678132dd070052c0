#include "fakes/OrdinaryUser.h"
#include "folder_events/FolderEventsTest.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

namespace brimwick {

using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(FolderEventsTest, NoticesARootBelowAFolderThatMayBeEnteredButNotRead) {
    const std::string hall = folder_.makeFolder("hall");
    const std::string root = folder_.makeFolder("hall/root");
    chmod(folder_.path().c_str(), 0711);
    chmod(hall.c_str(), 0333);
    options_.slowInterval = std::chrono::milliseconds(1);
    roots_ = {root};

    const OrdinaryUser user;
    start();
    std::filesystem::remove(root);
    EXPECT_THAT(flagsUpTo(removed), ElementsAre(removed));
    walk();
    std::filesystem::create_directory(root);
    EXPECT_THAT(flagsUpTo(created), ElementsAre(created));
    EXPECT_THAT(limits_, IsEmpty());
    stream_.reset();
    chmod(hall.c_str(), 0755);
}

} // namespace brimwick
