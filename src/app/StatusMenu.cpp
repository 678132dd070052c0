#include "app/StatusMenu.h"

#include "app/BWApplication.h"
#include "app/MenuShortcut.h"
#include "hotkeys/StoredHotKey.h"

#include <QAction>
#include <QApplication>
#include <QFile>
#include <QMessageBox>
#include <QScopeGuard>

#include <cstdio>

namespace brimwick {

namespace {

constexpr int aboutIconSize = 64;

} // namespace

StatusMenu::~StatusMenu() {
    undoStack_.setMenuItem(nullptr);
    redoStack_.setMenuItem(nullptr);
}

StatusMenu::StatusMenu(BWStack<BWAction>& undoStack, BWStack<BWAction>& redoStack, MainLoop& mainLoop,
                       StatusMenuCommands commands)
    : undoStack_(undoStack), redoStack_(redoStack), mainLoop_(mainLoop), commands_(std::move(commands)),
      MoveFilesMenuItem_(addItem("Move Files...", &StatusMenu::moveFilesMenuItemSelected)),
      bwCopyFilesMenuItem_(addItem("Copy Files...", &StatusMenu::bwCopyFilesMenuItemSelected)),
      OpenFolderMenuItem_(addItem("Open Folder...", &StatusMenu::openFolderMenuItemSelected)) {
    statusMenu_.addSeparator();
    undoMenuItem_ = addItem("Undo", &StatusMenu::undoMenuItemSelected);
    redoMenuItem_ = addItem("Redo", &StatusMenu::redoMenuItemSelected);
    statusMenu_.addSeparator();
    preferencesMenuItem_ = addItem("Preferences...", &StatusMenu::preferencesMenuItemSelected);
    statusMenu_.addSeparator();
    helpMenuItem_ = addItem("Brimwick Help", &StatusMenu::helpMenuItemSelected);
    checkForUpdateMenuItem_ = addItem("Check for Update", &StatusMenu::checkForUpdateMenuItemSelected);
    aboutMenuItem_ = addItem("About Brimwick", &StatusMenu::aboutMenuItemSelected);
    statusMenu_.addSeparator();
    addItem("Quit Brimwick", &StatusMenu::quitMenuItemSelected);
    for (QAction* item : {MoveFilesMenuItem_, bwCopyFilesMenuItem_, OpenFolderMenuItem_, aboutMenuItem_})
        item->setEnabled(false);
}

QAction* StatusMenu::addItem(const char* title, void (StatusMenu::*handler)()) {
    QAction* item = statusMenu_.addAction(title);
    QObject::connect(item, &QAction::triggered, &statusMenu_, [this, handler] {
        // What is chosen in the midst of an action speaks of a state that is over when it ends.
        if (!mainLoop_.isHeld() || handler == &StatusMenu::quitMenuItemSelected) (this->*handler)();
    });
    return item;
}

void StatusMenu::showStatusItem(const Resources& resources) {
    statusItem_.setContextMenu(&statusMenu_);
    if (const auto image = resources.pathForResource("MenuBarIcon", "png"))
        statusItem_.setIcon(QIcon(QFile::decodeName(QByteArray::fromStdString(*image))));
    statusItem_.setToolTip("Brimwick");
    statusItem_.show();
    if (!QSystemTrayIcon::isSystemTrayAvailable())
        std::fputs("brimwick: no system tray on this desktop; the icon appears when there is one\n", stderr);
}

void StatusMenu::bindStacks() {
    undoStack_.setMenuItem([this](bool enabled) { undoMenuItem_->setEnabled(enabled); });
    redoStack_.setMenuItem([this](bool enabled) { redoMenuItem_->setEnabled(enabled); });
    undoMenuItem_->setEnabled(false);
    redoMenuItem_->setEnabled(false);
}

void StatusMenu::enableActions() {
    for (QAction* item : {MoveFilesMenuItem_, OpenFolderMenuItem_, bwCopyFilesMenuItem_, preferencesMenuItem_,
                          helpMenuItem_, checkForUpdateMenuItem_, aboutMenuItem_})
        item->setEnabled(true);
}

void StatusMenu::setMenuItemKeyEquivalents(const PreferencesStore& preferences, KeyboardLayout& layout) {
    const auto show = [&](QAction* item, Mode mode) {
        const StoredHotKey stored = storedHotKey(preferences, mode);
        item->setShortcut(menuShortcut(layout, stored.keyCode, stored.modifierFlags));
    };
    show(OpenFolderMenuItem_, BWModeOpen);
    show(bwCopyFilesMenuItem_, BWModeCopy);
    show(MoveFilesMenuItem_, BWModeMove);
}

bool StatusMenu::showMessage(const std::string& title, const std::string& text) {
    if (!QSystemTrayIcon::isSystemTrayAvailable() || !statusItem_.isVisible()) return false;
    statusItem_.showMessage(QString::fromStdString(title), QString::fromStdString(text), statusItem_.icon());
    return true;
}

void StatusMenu::undoMenuItemSelected() {
    const auto action = undoStack_.pop();
    if (!action) return;
    const auto keep = qScopeGuard([&] { redoStack_.push(action); });
    action->performActionInDirection(1);
}

void StatusMenu::redoMenuItemSelected() {
    const auto action = redoStack_.pop();
    if (!action) return;
    const auto keep = qScopeGuard([&] { undoStack_.push(action); });
    action->performActionInDirection(0);
}

void StatusMenu::aboutMenuItemSelected() {
    if (!about_) {
        about_ = std::make_unique<QMessageBox>(
            QMessageBox::NoIcon, "About Brimwick",
            QString(
                "<b>Brimwick %1</b><p>Files things away, fast.</p><p>By the Brimwick developers, with Qt %2, "
                "Highway, libplist, utf8proc and other free libraries.</p>")
                .arg(BRIMWICK_VERSION, qVersion()),
            QMessageBox::Close);
        about_->setIconPixmap(QApplication::windowIcon().pixmap(aboutIconSize));
    }
    about_->show();
    about_->raise();
    about_->activateWindow();
}

void StatusMenu::quitMenuItemSelected() {
    BWApplication::terminate();
}

} // namespace brimwick
