#include "preferences/PreferencesController.h"

#include <QCheckBox>
#include <QPushButton>
#include <QTabWidget>

namespace brimwick {

PreferencesController::PreferencesController(PreferencesSurroundings surroundings)
    : surroundings_(std::move(surroundings)), preferencesWindow_(surroundings_.windowSystem),
      controls_(preferencesWindow_), focus_(controls_, place_),
      hotKeyFields_({surroundings_.hotKeys, surroundings_.indexedFolders.preferences,
                     surroundings_.keyboardLayout, surroundings_.mainLoop, place_, controls_,
                     surroundings_.terminate, surroundings_.setMenuItemKeyEquivalents}),
      indexedFolders_(surroundings_.indexedFolders, preferencesWindow_, controls_, focus_, place_),
      notificationSettings_({surroundings_.indexedFolders.preferences, surroundings_.animateExampleIcon},
                            *controls_.notificationsTab, focus_) {
    preferencesWindow_.setClosedHandler([this] { windowWasHidden(true); });
    QObject::connect(controls_.preferencesWindowCloseButton, &QPushButton::clicked, &preferencesWindow_,
                     [this] { preferencesWindowCloseButtonWasPressed(); });
    QObject::connect(controls_.preferencesWindowTabView, &QTabWidget::currentChanged, &preferencesWindow_,
                     [this](int tab) { tabWasSelected(tab); });
}

void PreferencesController::showPreferences() {
    const bool isRebuilding = surroundings_.indexedFolders.indexRebuilder.indexIsRebuilding();
    if (isRebuilding)
        indexedFolders_.showIndexedFoldersCurtain();
    else
        indexedFolders_.hideIndexedFoldersCurtain();
    controls_.rebuildIndexCheckBox->setChecked(false);
    controls_.rebuildIndexCheckBox->setEnabled(true);
    populatePreferencesWindow();
    preferencesWindow_.setPhantomMode(false);
    surroundings_.closePickerUnlessPhantom();
    if (isRebuilding) surroundings_.showRebuildIndexProgressIndicator();
    indexedFolders_.reload();
    enableDisablePreferencesWindowControls();
    focus_.handleTabViewChange();
    preferencesWindow_.makeKeyAndOrderFront();
}

void PreferencesController::hidePreferences() {
    const bool wasShown = !isInPhantomMode();
    preferencesWindow_.setPhantomMode(true);
    windowWasHidden(wasShown);
}

void PreferencesController::windowWasHidden(bool wasShown) {
    indexedFolders_.closePanel();
    IndexRebuilder& rebuilder = surroundings_.indexedFolders.indexRebuilder;
    if (!rebuilder.indexedFoldersHaveChanged()) return;
    const bool walksTheFormerList = rebuilder.indexIsRebuilding();
    rebuilder.rebuildIndexOnSeparateThreadWithRecursionCountForReason(BWInteger(),
                                                                      rebuildReasonPreferencesChanged);
    if (walksTheFormerList && wasShown && controls_.rebuildIndexCheckBox->isChecked())
        rebuilder.setNeedToRebuildIndexAgain(true);
}

void PreferencesController::populatePreferencesWindow() {
    hotKeyFields_.populate();
    notificationSettings_.populate();
}

void PreferencesController::tabWasSelected(int tab) {
    place_.selectedTab = tab == 0 ? PreferencesTab::General : PreferencesTab::Notifications;
    focus_.handleTabViewChange();
}

} // namespace brimwick
