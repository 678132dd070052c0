#include "preferences/PreferencesController.h"

#include "picker/DisplayText.h"

#include <QListWidget>
#include <QPushButton>

namespace brimwick {

PreferencesController::PreferencesController(PreferencesSurroundings surroundings)
    : surroundings_(std::move(surroundings)), preferencesWindow_(surroundings_.windowSystem),
      controls_(preferencesWindow_), focus_(controls_, place_),
      hotKeyFields_({surroundings_.hotKeys, surroundings_.preferences, surroundings_.keyboardLayout,
                     surroundings_.mainLoop, place_, controls_, surroundings_.terminate,
                     surroundings_.setMenuItemKeyEquivalents}) {
    QObject::connect(controls_.preferencesWindowCloseButton, &QPushButton::clicked, &preferencesWindow_,
                     [this] { preferencesWindowCloseButtonWasPressed(); });
}

void PreferencesController::showPreferences() {
    populatePreferencesWindow();
    preferencesWindow_.setPhantomMode(false);
    surroundings_.closePickerUnlessPhantom();
    enableDisablePreferencesWindowControls();
    focus_.handleTabViewChange();
    preferencesWindow_.makeKeyAndOrderFront();
}

void PreferencesController::hidePreferences() {
    preferencesWindow_.setPhantomMode(true);
}

void PreferencesController::populatePreferencesWindow() {
    hotKeyFields_.populate();
    controls_.indexedFoldersTableView->clear();
    for (const BWSelectedFileOrFolder& folder : surroundings_.indexedFolders) {
        const QString path = displayText(folder.path());
        controls_.indexedFoldersTableView->addItem(path);
        controls_.indexedFoldersTableView->item(controls_.indexedFoldersTableView->count() - 1)
            ->setToolTip(path);
    }
}

} // namespace brimwick
