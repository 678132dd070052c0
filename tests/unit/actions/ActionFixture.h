#pragma once

#include "actions/BWAction.h"
#include "fakes/FakeMainLoop.h"
#include "fakes/FakeNotificationService.h"
#include "fakes/FakeSoundPlayer.h"

#include <gmock/gmock.h>

#include <cstdlib>

#include "unit/actions/FileFacts.h"

namespace brimwick {

constexpr std::int32_t forwards = 0;
constexpr std::int32_t backwards = 1;

class ActionTest : public testing::Test {
  protected:
    ActionTest() {
        unsetenv("XDG_DATA_HOME");
        home.makeFolder("from");
        home.makeFolder("to");
        setPreference("NotificationSoundOnMove", true);
        setPreference("NotificationSoundOnCopy", true);
    }

    void setPreference(const char* key, bool value) { preferences.preferences().set(key, {value}); }

    BWAction action(Mode type, const Names& files, const std::string& from = "from",
                    const std::string& to = "to") {
        BWAction made({preferences, sounds, {journal, workRunner}, home.path()}, view);
        made.setActionType(type);
        BWAction::Files entries;
        for (const std::string& name : files)
            entries.push_back(BWSelectedFileOrFolder::fileOrFolderWithPath(home / (from + "/" + name)));
        made.setSourceFiles(entries);
        made.setSourceFolder(BWSelectedFileOrFolder::fileOrFolderWithPath(home / from));
        made.setTargetFolder(BWSelectedFileOrFolder::fileOrFolderWithPath(home / to));
        return made;
    }
    /// The same action, with its work run in another way.
    BWAction runBy(WorkRunner& runner, const BWAction& model) {
        BWAction made({preferences, sounds, {journal, runner}, home.path()}, view);
        made.setActionType(model.actionType());
        made.setSourceFiles(model.sourceFiles());
        made.setSourceFolder(model.sourceFolder());
        made.setTargetFolder(model.targetFolder());
        return made;
    }
    static Names pathsOf(const BWAction::Files& files) {
        Names paths;
        for (const auto& file : files) paths.push_back(file.path());
        return paths;
    }

    TemporaryFolder home;
    std::vector<BWSelectedFileOrFolder> indexedFolders;
    PreferencesStore preferences{home.path(), Resources(home.path()), indexedFolders};
    FakeSoundPlayer player;
    SoundBox sounds{player, [] { return 0U; }};
    FileJournal journal;
    InPlaceWorkRunner workRunner;
    FakeNotificationService service;
    FakeMainLoop clock;
    UserNotifications view{service, clock};
};

class ActionBetweenFileSystems : public ActionTest {
  protected:
    BWAction actionTo(Mode type, const Names& files) {
        BWAction made = action(type, files);
        made.setTargetFolder(BWSelectedFileOrFolder::fileOrFolderWithPath(other.path()));
        return made;
    }

    TemporaryFolder other{otherFileSystem()};
};

} // namespace brimwick
