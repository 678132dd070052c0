#include "model/RealHomeDirectory.h"

#include <gtest/gtest.h>
#include <pwd.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

namespace brimwick {
namespace {

TEST(RealHomeDirectory, ComesFromTheUserDatabaseWhateverHomeSays) {
    const char* home = std::getenv("HOME");
    const std::string before = home == nullptr ? "" : home;
    setenv("HOME", "/somewhere/else", 1);
    const std::string found = realHomeDirectory();
    if (home == nullptr)
        unsetenv("HOME");
    else
        setenv("HOME", before.c_str(), 1);

    EXPECT_EQ(found, getpwuid(getuid())->pw_dir);
    EXPECT_NE(found, "/somewhere/else");
}

TEST(RealHomeDirectoryDeathTest, StopsTheProcessForAUserWithoutAnEntry) {
    constexpr uid_t stranger = 3987654321;
    ASSERT_EQ(getpwuid(stranger), nullptr);
    EXPECT_DEATH(homeDirectoryOfUser(stranger), "no entry for the user 3987654321");
}

} // namespace
} // namespace brimwick
