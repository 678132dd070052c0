#include "app/BWView.h"

#include "app/BWApplication.h"
#include "app/HelpPage.h"

#include <QLineEdit>

namespace brimwick {

BWView::BWView(BWModel& model, const ActionServices& actions, const Ports& ports,
               UserNotifications& notifications, WorkspaceNotificationCenter& notificationCenter,
               const EntryIcons& icons, Resources resources)
    : model_(model), notifications_(notifications), notificationCenter_(notificationCenter),
      mainLoop_(ports.mainLoop), keyboardLayout_(ports.keyboardLayout), resources_(std::move(resources)),
      preferences_({{model.folderIndexer(), model.indexRebuilder(), model.preferences(), model.sounds(),
                     notifications, ports.fileManager, icons, model.homeDirectory(), BWApplication::restart},
                    model.hotKeys(),
                    ports.keyboardLayout,
                    ports.mainLoop,
                    ports.windowSystem,
                    [this] {
                        if (!picker_.isInPhantomMode()) picker_.wickWindowCloseButtonWasPressed();
                    },
                    [this] { setMenuItemKeyEquivalents(); },
                    [this] { showRebuildIndexProgressIndicator(); },
                    BWApplication::terminate,
                    [this](std::int64_t style) { animateIconUsingMethodWithToolTip(true, style, ""); }}),
      updates_(notifications),
      picker_(PickerSurroundings{
          model.preferences(), model.folderSearch(), model.undoStack(), model.sounds(), notifications,
          actions, ports.fileManager, ports.windowSystem, notificationCenter, icons, model.homeDirectory(),
          [this] { return model_.indexRebuilder().indexIsRebuilding(); },
          [this] { return model_.indexRebuilder().indexHasBeenInitialized(); },
          [this] { showRebuildIndexProgressIndicator(); }, [this] { preferences_.hidePreferences(); }}),
      statusMenu_(
          model.undoStack(), model.redoStack(), ports.mainLoop,
          {[this](Mode mode) { picker_.invokeBrimwickWithModeWithFinderSelectedFolders(mode, nullptr); },
           [this] { showPreferencesInPlaceOfPicker(); }, [this] { openHelpPage(resources_); },
           [this] { updates_.checkForUpdateOnRequest(); }}),
      keyDispatcher_(picker_, preferences_), keyEvents_(ports.keyboardLayout),
      requests_(ports.instance, model.folderIndexer(), model.indexRebuilder(), ports.mainLoop,
                [this] { showPreferencesInPlaceOfPicker(); }) {
    model_.indexRebuilder().setObserver(*this);
    model_.hotKeys().setInvocation(
        [this](Mode mode) { mainLoop_.runWhenFree([this, mode] { hotKeyWasReleased(mode); }); });
    keyboardLayout_.setChangedHandler([this] {
        preferences_.hotKeyFields().refresh();
        setMenuItemKeyEquivalents();
    });
}

BWView::~BWView() {
    keyboardLayout_.setChangedHandler(nullptr);
    model_.hotKeys().setInvocation(nullptr);
}

void BWView::hotKeyWasReleased(Mode mode) {
    // Whoever presses one of the hot keys there means to record it.
    if (preferences_.takesHotKeys())
        preferences_.hotKeyFields().showHotKeyErrorMessage("Duplicate shortcut");
    else
        picker_.invokeBrimwickWithModeWithFinderSelectedFolders(mode, nullptr);
}

void BWView::showPreferencesInPlaceOfPicker() {
    picker_.wickWindow().setPhantomMode(true);
    preferences_.showPreferences();
}

void BWView::setMenuItemKeyEquivalents() {
    statusMenu_.setMenuItemKeyEquivalents(model_.preferences(), keyboardLayout_);
}

void BWView::initializeUserInterface() {
    if (preferencesUIHasBeenInitialized_) return;
    statusMenu_.showStatusItem(resources_);
    IndexRebuilder& rebuilder = model_.indexRebuilder();
    rebuilder.rebuildIndexOnSeparateThreadWithRecursionCountForReason(BWInteger(), rebuildReasonFirstIndex);
    rebuilder.initializeEventStream();
    preferences_.indexedFolders().noteWatchedFolders();
    preferences_.indexedFolders().hideIndexedFoldersCurtain();
    statusMenu_.bindStacks();
    initializeNotificationCenter();
    picker_.restoreWindowSize();
    picker_.wickWindow().setPhantomMode(true);
    preferences_.preferencesWindow().setPhantomMode(true);
    setMenuItemKeyEquivalents();
    preferences_.enableDisablePreferencesWindowControls();
    updates_.checkForUpdate();
    preferencesUIHasBeenInitialized_ = true;
    // Without a folder nothing can be found: what to do stands in the window.
    if (model_.folderIndexer().indexedFolders().empty()) preferences_.showPreferences();
}

void BWView::initializeNotificationCenter() {
    notificationCenter_.addObserver("BWWickWindowClosed", [this](void*) { picker_.wickWindowClosed(); });
}

void BWView::enableActions() {
    actionsEnabled_ = true;
    statusMenu_.enableActions();
    requests_.noteFirstIndex();
}

// The panel and the animation have no face yet; the windows say themselves that they wait for the index.
void BWView::showRebuildIndexProgressIndicator() {
    if (!preferences_.isInPhantomMode()) preferences_.indexedFolders().showIndexedFoldersCurtain();
}

void BWView::animateIconUsingMethodWithToolTip(bool /*example*/, std::int64_t /*method*/,
                                               const std::string& /*toolTip*/) {}

void BWView::hideRebuildIndexProgressIndicator() {
    preferences_.indexedFolders().rebuildHasEnded();
    if (!picker_.isVisible()) return;
    QLineEdit* searchField = picker_.controls().searchField;
    picker_.wickWindow().raise();
    searchField->setEnabled(true);
    searchField->setFocus();
    if (!searchField->text().isEmpty()) picker_.search();
}

} // namespace brimwick
