#pragma once

#include "app/BWApplication.h"
#include "app/Brimwick.h"
#include "fakes/FakeFileManager.h"
#include "fakes/FakeFolderEventStream.h"
#include "fakes/FakeHotKeyService.h"
#include "fakes/FakeInstanceService.h"
#include "fakes/FakeKeyboardLayout.h"
#include "fakes/FakeMainLoop.h"
#include "fakes/FakeNotificationService.h"
#include "fakes/FakeSoundPlayer.h"
#include "fakes/FakeWindowSystem.h"
#include "fakes/TemporaryFolder.h"
#include "model/FileUrl.h"
#include "picker/BWWickTableView.h"
#include "picker/PickerController.h"

#include <QLineEdit>

#include <gtest/gtest.h>

#include <optional>

namespace brimwick {

/// The whole program on the fakes, with a home of its own.
class ProgramTest : public testing::Test {
  protected:
    ~ProgramTest() override { static_cast<BWApplication*>(qApp)->setKeyDispatcher(nullptr, nullptr); }

    /// Writes a preferences file, as an earlier run would have left it.
    void storePreferences(const std::vector<std::string>& indexedFolders,
                          const std::vector<std::pair<std::string, PropertyListValue>>& others = {}) {
        std::filesystem::create_directories(supportFolder());
        std::vector<BWSelectedFileOrFolder> entries;
        for (const std::string& path : indexedFolders)
            entries.push_back(BWSelectedFileOrFolder::fileOrFolderWithPath(path));
        PreferencesStore store(supportFolder(), Resources(BRIMWICK_RESOURCES), entries);
        store.setPreferences(PreferencesStore::defaultPreferencesDictionary());
        for (const auto& [key, value] : others) store.preferences().set(key, value);
        store.savePreferences();
    }
    /// What stands in the preferences file now.
    PropertyListDictionary storedPreferences() const {
        const std::vector<BWSelectedFileOrFolder> none;
        PreferencesStore store(supportFolder(), Resources(BRIMWICK_RESOURCES), none);
        store.loadPreferences();
        return store.preferences();
    }
    std::string supportFolder() const { return home / "Library/Application Support/Brimwick"; }

    void startWithoutIndex() {
        brimwick.emplace(Ports{hotKeys, keyboardLayout, fileManager, notifications, sounds, windowSystem,
                               folderEvents, mainLoop, instance},
                         workRunner, home.path(), Resources(BRIMWICK_RESOURCES));
        static_cast<BWApplication*>(qApp)->setKeyDispatcher(&brimwick->view().keyDispatcher(),
                                                            &brimwick->view().keyEvents());
    }
    /// Starts the program and waits for the first index.
    void start() {
        startWithoutIndex();
        ASSERT_TRUE(mainLoop.runNext());
        notifications.delivered.clear();
        sounds.played.clear();
    }
    /// Makes a file of this name in the folder and selects it, with those selected before, in the file
    /// manager.
    std::string selectFile(const std::string& name, const std::string& content = "content") {
        const std::string path = home.makeFile(name, content);
        fileManager.windowSelection.push_back(fileUrlWithPath(path, false));
        return path;
    }

    PickerController& picker() { return brimwick->view().picker(); }
    const PickerControls& controls() { return picker().controls(); }
    void invoke(Mode mode) { picker().invokeBrimwickWithModeWithFinderSelectedFolders(mode, nullptr); }
    PreferencesController& preferences() { return brimwick->view().preferences(); }
    /// Shows the preferences window, with the focus where it begins.
    void showPreferences() {
        bringToFront(preferences().preferencesWindow(), [this] { preferences().showPreferences(); });
    }
    /// The same for the picker.
    void showPicker(Mode mode) {
        bringToFront(picker().wickWindow(), [this, mode] { invoke(mode); });
    }
    template<typename Show>
    static void bringToFront(QWidget& window, Show show) {
        // Here a window that is hidden keeps the focus until another takes it.
        QWidget other;
        other.show();
        other.activateWindow();
        QApplication::processEvents();
        show();
        window.activateWindow();
        QApplication::processEvents();
        ASSERT_EQ(QApplication::activeWindow(), &window);
    }
    void type(const QString& text) {
        QApplication::processEvents();
        controls().searchField->setText(text);
    }
    std::vector<std::string> resultNames() {
        std::vector<std::string> names;
        const QAbstractItemModel* rows = controls().searchResultsTableView->model();
        for (int row = 0; row < rows->rowCount(); ++row)
            names.push_back(rows->index(row, 0).data().toString().toStdString());
        return names;
    }
    QString prompt();
    bool promptIsShown();

    TemporaryFolder home;
    FakeHotKeyService hotKeys;
    FakeKeyboardLayout keyboardLayout;
    FakeFileManager fileManager;
    FakeNotificationService notifications;
    FakeSoundPlayer sounds;
    FakeWindowSystem windowSystem;
    FakeFolderEventStream folderEvents;
    FakeMainLoop mainLoop;
    FakeInstanceService instance;
    InPlaceWorkRunner workRunner;
    std::optional<Brimwick> brimwick;
};

} // namespace brimwick
