#include "preferences/IndexedFoldersController.h"

#include "actions/TrashFolder.h"
#include "feedback/Refusal.h"
#include "feedback/ShowInFinder.h"
#include "model/FileUrl.h"
#include "model/IndexedFolderList.h"
#include "model/PathText.h"
#include "picker/DisplayText.h"
#include "preferences/BWPreferencesWindow.h"
#include "preferences/ChosenFolder.h"
#include "preferences/PreferencesControls.h"
#include "preferences/PreferencesFocus.h"

#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QFileDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QThread>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <filesystem>

namespace brimwick {

namespace {

/// The Open mode's field, whose key a press in the list is taken for after a command.
constexpr std::int32_t indexAfterChange = 2;
constexpr std::chrono::milliseconds pauseBeforeLooking{20};

void closePopups() {
    for (QWidget* popup = QApplication::activePopupWidget(); popup != nullptr;
         popup = QApplication::activePopupWidget())
        if (!popup->close()) break;
}

bool isAmongOrBelow(const std::set<std::string>& folders, std::string path) {
    for (;;) {
        if (folders.contains(path)) return true;
        std::string above = parentPath(path);
        if (above.size() >= path.size()) return false;
        path = std::move(above);
    }
}

} // namespace

IndexedFoldersController::IndexedFoldersController(IndexedFoldersSurroundings surroundings,
                                                   BWPreferencesWindow& window, PreferencesControls& controls,
                                                   PreferencesFocus& focus, PreferencesPlace& place)
    : surroundings_(std::move(surroundings)), window_(window), controls_(controls), focus_(focus),
      place_(place) {
    const auto connect = [this](QPushButton* button, void (IndexedFoldersController::*handler)()) {
        QObject::connect(button, &QPushButton::clicked, &window_, [this, handler] {
            // A press by a mnemonic clicks a moment later.
            if (!window_.isInPhantomMode()) (this->*handler)();
        });
    };
    connect(controls_.plusButton, &IndexedFoldersController::selectIndexedFolder);
    connect(controls_.minusButton, &IndexedFoldersController::removeIndexedFolder);
    connect(controls_.showInFinderButton, &IndexedFoldersController::showIndexedFolderInFinder);
    connect(controls_.addTrashFolderButton, &IndexedFoldersController::addTrashFolderButtonWasPressed);
    QObject::connect(controls_.rebuildIndexCheckBox, &QCheckBox::clicked, &window_, [this] {
        if (!window_.isInPhantomMode()) rebuildIndexCheckBoxChanged();
    });
    QObject::connect(controls_.preferencesContextMenuShowInFinderMenuItem, &QAction::triggered, &window_,
                     [this] { showIndexedFolderInFinder(); });
    QObject::connect(controls_.preferencesContextMenuRemoveFolderMenuItem, &QAction::triggered, &window_,
                     [this] { removeIndexedFolder(); });
    BWPreferencesTableView* const table = controls_.indexedFoldersTableView;
    QObject::connect(table, &QListWidget::itemSelectionChanged, &window_,
                     [this] { enableDisablePreferencesWindowControls(); });
    QObject::connect(table, &QListWidget::itemDoubleClicked, &window_,
                     [this] { showIndexedFolderInFinder(); });
    table->setDropped([this](std::vector<std::string> paths) {
        // Once the drop is over, as an alert may come.
        QMetaObject::invokeMethod(
            &window_, [this, paths = std::move(paths)] { foldersWereDropped(paths); }, Qt::QueuedConnection);
    });
    connect(controls_.restartButton, &IndexedFoldersController::restartButtonWasPressed);
    table->setMenuWillOpen([this, table] {
        focus_.showFocus(table);
        enableDisablePreferencesWindowControls();
    });
}

IndexedFoldersController::~IndexedFoldersController() = default;

std::vector<BWSelectedFileOrFolder>& IndexedFoldersController::folders() const {
    return surroundings_.folderIndexer.indexedFolders();
}

void IndexedFoldersController::focusList() {
    focus_.showFocus(controls_.indexedFoldersTableView);
    place_.preferencesWindowFocusedControlIndex = indexAfterChange;
    place_.listHasFocus = place_.selectedTab == PreferencesTab::General;
    // There the list is not to be seen, and the box of that number is what Space acts on.
    if (!place_.listHasFocus) focus_.focusControl(focus_.notificationsControl(indexAfterChange));
}

void IndexedFoldersController::selectIndexedFolder() {
    focusList();
    panel_ = std::make_unique<QFileDialog>(&window_, "Add an Indexed Folder");
    panel_->setFileMode(QFileDialog::Directory);
    panel_->setOption(QFileDialog::ShowDirsOnly);
    panel_->setLabelText(QFileDialog::Accept, "Select");
    panel_->setDirectory(QFile::decodeName(QByteArray::fromStdString(surroundings_.realHomeDirectory)));
    // Queued, as the panel goes with it and must have left the handler that ends it.
    QObject::connect(
        panel_.get(), &QFileDialog::finished, &window_,
        [this, panel = panel_.get(), level = QThread::currentThread()->loopLevel()](int result) {
            panelHasEnded(panel, result == QDialog::Accepted, level);
        },
        Qt::QueuedConnection);
    panel_->open();
}

void IndexedFoldersController::panelHasEnded(const QFileDialog* panel, bool accepted, int loopLevel) {
    if (panel_.get() != panel) return;
    if (QThread::currentThread()->loopLevel() > loopLevel) {
        // A message or a menu of the panel runs a loop of its own, and must be left before the panel goes.
        for (QDialog* const message : panel_->findChildren<QDialog*>()) message->reject();
        closePopups();
        QTimer::singleShot(pauseBeforeLooking, &window_,
                           [this, panel, accepted, loopLevel] { panelHasEnded(panel, accepted, loopLevel); });
        return;
    }
    const QStringList chosen = accepted ? panel_->selectedFiles() : QStringList();
    // With it goes the list of what could be typed, which would keep the keyboard.
    panel_.reset();
    closePopups();
    if (!window_.isInPhantomMode()) window_.makeKeyAndOrderFront();
    // The desktop's own dialog may answer with nothing, or with what lies on another machine.
    if (!chosen.isEmpty() && !window_.isInPhantomMode() && QDir::isAbsolutePath(chosen.first()))
        addIndexedFolders({exactPathOfShown(QDir::cleanPath(chosen.first()))});
}

void IndexedFoldersController::closePanel() {
    if (panel_) panel_->reject();
}

void IndexedFoldersController::addIndexedFolders(const std::vector<std::string>& paths) {
    std::string added;
    for (const std::string& path : paths) {
        BWSelectedFileOrFolder folder =
            BWSelectedFileOrFolder::fileOrFolderWithURL(fileUrlWithPath(path, true));
        if (IndexedFolderList::coversPath(folders(), folder.path())) {
            subFolderAlert();
            // A hot key may have put the window away meanwhile, and what changes now would not be indexed.
            if (window_.isInPhantomMode()) break;
            continue;
        }
        added = folder.path();
        folders().push_back(std::move(folder));
        surroundings_.indexRebuilder.setIndexedFoldersHaveChanged(true);
    }
    if (added.empty() && !surroundings_.indexRebuilder.indexedFoldersHaveChanged()) return;
    forceRebuild();
    surroundings_.preferences.savePreferences();
    // After the save: the file keeps the order of the choices until the next one.
    IndexedFolderList::sortByName(folders());
    reload();
    selectIndexedFolderWithPath(added.empty() ? paths.back() : added);
}

void IndexedFoldersController::foldersWereDropped(const std::vector<std::string>& paths) {
    if (window_.isInPhantomMode()) return;
    std::vector<std::string> onlyFolders;
    for (const std::string& path : paths) {
        std::error_code failure;
        if (std::filesystem::is_directory(path, failure))
            onlyFolders.push_back(path);
        else
            refuse(surroundings_.sounds, surroundings_.notifications,
                   "\"" + path + "\" is not a folder that can be indexed.");
    }
    focusList();
    if (!onlyFolders.empty()) addIndexedFolders(onlyFolders);
}

void IndexedFoldersController::restartButtonWasPressed() {
    surroundings_.preferences.savePreferences();
    surroundings_.restart();
}

void IndexedFoldersController::noteWatchedFolders() {
    for (const BWSelectedFileOrFolder& folder : folders()) watchedFolders_.insert(folder.path());
}

void IndexedFoldersController::subFolderAlert() {
    window_.makeKeyAndOrderFront();
    QMessageBox alert(QMessageBox::Warning, "Brimwick", "Subfolder Not Allowed", QMessageBox::Ok, &window_);
    alert.setInformativeText(
        "Because the folder you selected is a subfolder of another indexed folder, it will automatically be "
        "indexed when the other folder is indexed. Therefore it will not be separately added to the list of "
        "indexed folders.");
    alert.exec();
}

int IndexedFoldersController::rowToWorkWith() {
    const auto refuseBecause = [this](const char* why) {
        refuse(surroundings_.sounds, surroundings_.notifications, why);
        return -1;
    };
    if (folders().empty()) return refuseBecause("No indexed folders are present in the list.");
    const int row = controls_.indexedFoldersTableView->selectedRow();
    focusList();
    return row < 0 ? refuseBecause("No indexed folders are selected in the list.") : row;
}

void IndexedFoldersController::removeIndexedFolder() {
    const int row = rowToWorkWith();
    if (row < 0) return;
    folders().erase(folders().begin() + row);
    reload();
    // The one that takes its place, so that several can be removed one after the other.
    if (!folders().empty())
        controls_.indexedFoldersTableView->selectRow(std::min(row, static_cast<int>(folders().size()) - 1));
    forceRebuild();
    surroundings_.preferences.savePreferences();
    surroundings_.indexRebuilder.setIndexedFoldersHaveChanged(true);
}

void IndexedFoldersController::showIndexedFolderInFinder() {
    const int row = rowToWorkWith();
    if (row < 0) return;
    showInFinder(folders().at(static_cast<std::size_t>(row)), surroundings_.fileManager,
                 surroundings_.preferences, surroundings_.sounds);
}

void IndexedFoldersController::addTrashFolderButtonWasPressed() {
    addTrashFolderToIndexedFolders();
    forceRebuild();
}

void IndexedFoldersController::addTrashFolderToIndexedFolders() {
    if (hasTrashFolder()) {
        refuse(surroundings_.sounds, surroundings_.notifications, "Can't add more than one Trash folder.");
        return;
    }
    const TrashFolder trash(surroundings_.realHomeDirectory);
    if (const auto ready = trash.makeReady(); !ready) {
        refuse(surroundings_.sounds, surroundings_.notifications, ready.error().description);
        return;
    }
    BWSelectedFileOrFolder folder = BWSelectedFileOrFolder::fileOrFolderWithPath(trash.path());
    folder.setName("Trash");
    folders().push_back(std::move(folder));
    reload();
    selectIndexedFolderWithPath(trash.path());
    surroundings_.preferences.savePreferences();
    surroundings_.indexRebuilder.setIndexedFoldersHaveChanged(true);
}

bool IndexedFoldersController::hasTrashFolder() const {
    return IndexedFolderList::hasTrashFolder(folders());
}

void IndexedFoldersController::selectIndexedFolderWithPath(const std::string& path) {
    const auto found = std::ranges::find(folders(), path, &BWSelectedFileOrFolder::path);
    if (found != folders().end())
        controls_.indexedFoldersTableView->selectRow(static_cast<int>(found - folders().begin()));
}

void IndexedFoldersController::showIndexedFoldersCurtain() {
    controls_.indexedFoldersCurtain->show();
    controls_.indexedFoldersCurtain->raise();
}

void IndexedFoldersController::hideIndexedFoldersCurtain() {
    controls_.indexedFoldersCurtain->hide();
}

void IndexedFoldersController::enableDisablePreferencesWindowControls() {
    if (!surroundings_.indexRebuilder.indexIsRebuilding()) updateEnabledState();
}

void IndexedFoldersController::rebuildHasEnded() {
    hideIndexedFoldersCurtain();
    updateEnabledState();
    // What was changed meanwhile is not in this index.
    if (!window_.isInPhantomMode() && controls_.rebuildIndexCheckBox->isChecked())
        surroundings_.indexRebuilder.setIndexedFoldersHaveChanged(true);
}

void IndexedFoldersController::updateEnabledState() {
    const bool oneIsSelected = !folders().empty() && controls_.indexedFoldersTableView->selectedRow() >= 0;
    controls_.minusButton->setEnabled(oneIsSelected);
    controls_.showInFinderButton->setEnabled(oneIsSelected);
    controls_.preferencesContextMenuRemoveFolderMenuItem->setEnabled(oneIsSelected);
    controls_.preferencesContextMenuShowInFinderMenuItem->setEnabled(oneIsSelected);
    controls_.addTrashFolderButton->setEnabled(!hasTrashFolder());
}

void IndexedFoldersController::rebuildIndexCheckBoxChanged() {
    surroundings_.indexRebuilder.setIndexedFoldersHaveChanged(controls_.rebuildIndexCheckBox->isChecked());
}

void IndexedFoldersController::forceRebuild() {
    controls_.rebuildIndexCheckBox->setChecked(true);
    controls_.rebuildIndexCheckBox->setEnabled(false);
    enableDisablePreferencesWindowControls();
}

void IndexedFoldersController::reload() {
    BWPreferencesTableView& table = *controls_.indexedFoldersTableView;
    table.clear();
    for (const BWSelectedFileOrFolder& folder : folders()) {
        const QString path = displayText(folder.path());
        const bool isTrash = folder.isTrashFolder();
        // A look at a folder whose disk does not answer would keep the window waiting.
        const auto icon = isTrash ? folder.icon() : Icon{Icon::Source::Folder, ""};
        auto* const row =
            new QListWidgetItem(surroundings_.icons.image(icon), isTrash ? QString("Trash") : path, &table);
        row->setToolTip(path.toHtmlEscaped());
    }
    table.describeRows();
    controls_.restartOffer->setVisible(
        std::ranges::any_of(folders(), [this](const BWSelectedFileOrFolder& folder) {
            return !isAmongOrBelow(watchedFolders_, folder.path());
        }));
}

} // namespace brimwick
