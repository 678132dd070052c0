#include "app/BWView.h"

#include <QLineEdit>

namespace brimwick {

BWView::BWView(BWModel& model, const Ports& ports, UserNotifications& notifications,
               WorkspaceNotificationCenter& notificationCenter, const EntryIcons& icons, Resources resources)
    : model_(model), notifications_(notifications), notificationCenter_(notificationCenter),
      resources_(std::move(resources)),
      picker_(PickerSurroundings{
          model.preferences(), model.folderSearch(), model.undoStack(), model.sounds(), notifications,
          ports.fileManager, ports.windowSystem, notificationCenter, icons, model.homeDirectory(),
          [this] { return model_.indexRebuilder().indexIsRebuilding(); },
          [this] { return model_.indexRebuilder().indexHasBeenInitialized(); },
          [this] { showRebuildIndexProgressIndicator(); }, [this] { preferences_.hidePreferences(); }}),
      statusMenu_(
          model.undoStack(), model.redoStack(),
          [this](Mode mode) { picker_.invokeBrimwickWithModeWithFinderSelectedFolders(mode, nullptr); }),
      keyDispatcher_(picker_, preferences_),
      requests_(ports.instance, model.folderIndexer(), model.indexRebuilder()) {
    model_.indexRebuilder().setObserver(*this);
    model_.hotKeys().setInvocation(
        [this](Mode mode) { picker_.invokeBrimwickWithModeWithFinderSelectedFolders(mode, nullptr); });
}

BWView::~BWView() {
    model_.hotKeys().setInvocation(nullptr);
}

void BWView::initializeUserInterface() {
    if (preferencesUIHasBeenInitialized_) return;
    statusMenu_.showStatusItem(resources_);
    IndexRebuilder& rebuilder = model_.indexRebuilder();
    rebuilder.rebuildIndexOnSeparateThreadWithRecursionCountForReason(BWInteger(), rebuildReasonFirstIndex);
    rebuilder.initializeEventStream();
    preferences_.hideIndexedFoldersCurtain();
    statusMenu_.bindStacks();
    initializeNotificationCenter();
    picker_.restoreWindowSize();
    picker_.wickWindow().setPhantomMode(true);
    preferences_.enableDisablePreferencesWindowControls();
    updates_.checkForUpdate();
    preferencesUIHasBeenInitialized_ = true;
}

void BWView::initializeNotificationCenter() {
    notificationCenter_.addObserver("BWWickWindowClosed", [this](void*) { picker_.wickWindowClosed(); });
}

void BWView::enableActions() {
    actionsEnabled_ = true;
    statusMenu_.enableActions();
    requests_.noteFirstIndex();
}

// The panel and the animation have no face yet; the picker says itself that it waits for the index.
void BWView::showRebuildIndexProgressIndicator() {}

void BWView::animateIconUsingMethodWithToolTip(bool /*example*/, std::int64_t /*method*/,
                                               const std::string& /*toolTip*/) {}

void BWView::hideRebuildIndexProgressIndicator() {
    if (!picker_.isVisible()) return;
    QLineEdit* searchField = picker_.controls().searchField;
    picker_.wickWindow().raise();
    searchField->setEnabled(true);
    searchField->setFocus();
    if (!searchField->text().isEmpty()) picker_.search();
}

} // namespace brimwick
