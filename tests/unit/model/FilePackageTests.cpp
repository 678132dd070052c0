#include "model/FilePackage.h"

#include <gtest/gtest.h>

namespace brimwick {
namespace {

TEST(FilePackage, IsKnownByItsExtension) {
    for (const char* name : {"Editor.app", "Editor.AppDir", "a.bundle", "a.framework", "a.plugin", "a.kext",
                             "a.rtfd", "a.pkg", "a.photoslibrary", "a.xcodeproj", "My.Old.app"})
        EXPECT_TRUE(isFilePackageName(name)) << name;
}

TEST(FilePackage, IsKnownInCapitalsAndSmallLetters) {
    EXPECT_TRUE(isFilePackageName("EDITOR.APP"));
    EXPECT_TRUE(isFilePackageName("editor.appdir"));
}

TEST(FilePackage, IsNoFolderOfAnotherName) {
    for (const char* name : {"app", "a.apps", "a.app.old", "a.app ", "app.d", "", ".", "a."})
        EXPECT_FALSE(isFilePackageName(name)) << name;
}

} // namespace
} // namespace brimwick
