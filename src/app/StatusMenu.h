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

/// What the items do that others do better.
struct StatusMenuCommands {
    /// Opens the picker in a mode.
    std::function<void(Mode)> invoke;
    /// In place of the picker.
    std::function<void()> showPreferences;
    std::function<void()> showHelp;
    std::function<void()> checkForUpdate;
};

/// The status item and the menu behind it. Main thread only.
class StatusMenu {
  public:
    /// The stacks and the loop outlive the menu.
    StatusMenu(BWStack<BWAction>& undoStack, BWStack<BWAction>& redoStack, MainLoop& mainLoop,
               StatusMenuCommands commands);

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

    void moveFilesMenuItemSelected() { commands_.invoke(BWModeMove); }
    void bwCopyFilesMenuItemSelected() { commands_.invoke(BWModeCopy); }
    void openFolderMenuItemSelected() { commands_.invoke(BWModeOpen); }
    void undoMenuItemSelected();
    void redoMenuItemSelected();
    void preferencesMenuItemSelected() { commands_.showPreferences(); }
    void helpMenuItemSelected() { commands_.showHelp(); }
    void checkForUpdateMenuItemSelected() { commands_.checkForUpdate(); }
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
    StatusMenuCommands commands_;
    QMenu statusMenu_;
    QAction* MoveFilesMenuItem_;
    QAction* bwCopyFilesMenuItem_;
    QAction* OpenFolderMenuItem_;
    QAction* undoMenuItem_;
    QAction* redoMenuItem_;
    QAction* preferencesMenuItem_;
    QAction* helpMenuItem_;
    QAction* checkForUpdateMenuItem_;
    QAction* aboutMenuItem_;
    QSystemTrayIcon statusItem_;
    std::unique_ptr<QMessageBox> about_;
};

} // namespace brimwick
