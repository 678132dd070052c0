#pragma once

#include "actions/BWAction.h"
#include "actions/BWStack.h"
#include "model/Mode.h"
#include "model/PreferencesStore.h"
#include "model/Resources.h"
#include "platform/ports/KeyboardLayout.h"
#include "platform/ports/MainLoop.h"

#include <QMenu>
#include <QSystemTrayIcon>

#include <functional>
#include <memory>

class QMessageBox;

namespace brimwick {

/// The status item and the menu behind it. Main thread only.
class StatusMenu {
  public:
    /// The stacks and the loop outlive the menu. `invoke` opens the picker in a mode, `showPreferences` the
    /// preferences in its place.
    StatusMenu(BWStack<BWAction>& undoStack, BWStack<BWAction>& redoStack, MainLoop& mainLoop,
               std::function<void(Mode)> invoke, std::function<void()> showPreferences);

    StatusMenu(const StatusMenu&) = delete;
    StatusMenu& operator=(const StatusMenu&) = delete;
    ~StatusMenu();

    /// Puts the item into the system's tray with its icon and tool tip; says on stderr when there is no tray.
    void showStatusItem(const Resources& resources);
    /// Ties Undo and Redo to their stacks; both are disabled from now on until a stack says otherwise.
    void bindStacks();
    void enableActions();
    /// Shows the stored hot keys beside their items. They are there to be read: no item acts on its keys.
    void setMenuItemKeyEquivalents(const PreferencesStore& preferences, KeyboardLayout& layout);
    /// A message of the status item's own; false when there is no tray to show it.
    bool showMessage(const std::string& title, const std::string& text);

    void moveFilesMenuItemSelected() { invoke_(BWModeMove); }
    void bwCopyFilesMenuItemSelected() { invoke_(BWModeCopy); }
    void openFolderMenuItemSelected() { invoke_(BWModeOpen); }
    void undoMenuItemSelected();
    void redoMenuItemSelected();
    void preferencesMenuItemSelected() { showPreferences_(); }
    void aboutMenuItemSelected();
    void quitMenuItemSelected();

    const QMenu& statusMenu() const { return statusMenu_; }
    const QSystemTrayIcon& statusItem() const { return statusItem_; }
    const QAction& undoMenuItem() const { return *undoMenuItem_; }
    const QAction& redoMenuItem() const { return *redoMenuItem_; }

  private:
    QAction* addItem(const char* title, void (StatusMenu::*handler)());

    BWStack<BWAction>& undoStack_;
    BWStack<BWAction>& redoStack_;
    MainLoop& mainLoop_;
    std::function<void(Mode)> invoke_;
    std::function<void()> showPreferences_;
    QMenu statusMenu_;
    QAction* MoveFilesMenuItem_;
    QAction* bwCopyFilesMenuItem_;
    QAction* OpenFolderMenuItem_;
    QAction* undoMenuItem_;
    QAction* redoMenuItem_;
    QAction* preferencesMenuItem_;
    QAction* aboutMenuItem_;
    QSystemTrayIcon statusItem_;
    std::unique_ptr<QMessageBox> about_;
};

} // namespace brimwick
