#include "preferences/PreferencesControls.h"

#include "preferences/BWPreferencesWindow.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>

namespace brimwick {

namespace {

constexpr int gap = 10;
constexpr int listHeight = 150;
constexpr int widthOfWindow = 520;

} // namespace

PreferencesControls::PreferencesControls(BWPreferencesWindow& window)
    : preferencesWindowTabView(new QTabWidget(&window)),
      notificationsTab(new NotificationsTab(preferencesWindowTabView)),
      hotKeyTextView(new BWTextView(&window)), bwCopyModeHotKeyTextView(new BWTextView(&window)),
      openModeHotKeyTextView(new BWTextView(&window)), hotKeyErrorMessageTextField(new ErrorLabel(&window)),
      bwCopyModeHotKeyErrorMessageTextField(new ErrorLabel(&window)),
      openModeHotKeyErrorMessageTextField(new ErrorLabel(&window)),
      indexedFoldersTableView(new BWPreferencesTableView(&window)),
      indexedFoldersCurtain(new QLabel("The index is being rebuilt...", indexedFoldersTableView)),
      plusButton(new QPushButton("Add...", &window)), minusButton(new QPushButton("Remove", &window)),
      showInFinderButton(new QPushButton("&Show", &window)),
      addTrashFolderButton(new QPushButton("Add &Trash", &window)),
      rebuildIndexCheckBox(new QCheckBox("Rebuild the &index when this window closes", &window)),
      restartOffer(new QWidget(&window)), restartButton(new QPushButton("R&estart Brimwick", restartOffer)),
      preferencesWindowCloseButton(new QPushButton("Close", &window)), window_(window) {
    auto* const layout = new QVBoxLayout(&window);
    layout->setContentsMargins(gap, gap, gap, gap);
    layout->setSpacing(gap);
    preferencesWindowTabView->addTab(generalTab(), "&General");
    preferencesWindowTabView->addTab(notificationsTab, "&Notifications");
    preferencesWindowTabView->setAccessibleName("Preferences");
    // Its keys are those of the window.
    preferencesWindowTabView->setFocusPolicy(Qt::NoFocus);
    preferencesWindowTabView->tabBar()->setFocusPolicy(Qt::NoFocus);
    layout->addWidget(preferencesWindowTabView);
    layout->addWidget(preferencesWindowCloseButton, 0, Qt::AlignRight);
    preferencesWindowCloseButton->setAutoDefault(false);
    // A minimum of the window itself would let it be narrower than its texts.
    layout->addStrut(widthOfWindow - 2 * gap);
    window.adjustSize();
}

QWidget* PreferencesControls::generalTab() {
    auto* const tab = new QWidget(preferencesWindowTabView);
    auto* const layout = new QGridLayout(tab);
    layout->setHorizontalSpacing(gap);
    layout->setVerticalSpacing(2);
    layout->setColumnStretch(1, 1);

    auto* const hint = new QLabel("To change a hot key, select its field and press the new one.", tab);
    hint->setWordWrap(true);
    layout->addWidget(hint, 0, 0, 1, 2);
    layout->setRowMinimumHeight(1, gap);
    addField(*layout, BWModeMove, "Move files:");
    addField(*layout, BWModeCopy, "Copy files:");
    addField(*layout, BWModeOpen, "Open a folder:");
    addIndexedFolders(*layout, 8);
    return tab;
}

void PreferencesControls::addIndexedFolders(QGridLayout& layout, int row) {
    auto* const caption = new QLabel("Indexed folders:", &window_);
    caption->setBuddy(indexedFoldersTableView);
    layout.addWidget(caption, row, 0, Qt::AlignRight | Qt::AlignTop);
    indexedFoldersTableView->setMinimumHeight(listHeight);
    layout.addWidget(indexedFoldersTableView, row, 1);
    preferencesContextMenuShowInFinderMenuItem = indexedFoldersTableView->menu().addAction("Show");
    preferencesContextMenuRemoveFolderMenuItem =
        indexedFoldersTableView->menu().addAction("Remove from List");
    indexedFoldersCurtain->setAlignment(Qt::AlignCenter);
    indexedFoldersCurtain->setAutoFillBackground(true);
    indexedFoldersCurtain->hide();
    auto* const overList = new QVBoxLayout(indexedFoldersTableView);
    overList->setContentsMargins(0, 0, 0, 0);
    overList->addWidget(indexedFoldersCurtain);

    plusButton->setToolTip("Add a folder, with all folders in it (key =)");
    plusButton->setAccessibleName("Add a folder");
    minusButton->setToolTip("Take the selected folder off the list; the folder itself stays (key -)");
    minusButton->setAccessibleName("Remove the selected folder from the list");
    showInFinderButton->setToolTip("Show the selected folder in the file manager");
    showInFinderButton->setAccessibleName("Show the selected folder in the file manager");
    addTrashFolderButton->setToolTip("Add the Trash, so that files can be moved there");
    addTrashFolderButton->setAccessibleName("Add the Trash to the list");
    auto* const buttons = new QHBoxLayout;
    buttons->setContentsMargins(0, gap / 2, 0, gap / 2);
    buttons->setSpacing(gap / 2);
    for (QPushButton* const button : {plusButton, minusButton, showInFinderButton, addTrashFolderButton}) {
        button->setAutoDefault(false);
        // The list, which they act on, keeps the focus.
        button->setFocusPolicy(Qt::NoFocus);
        if (button == addTrashFolderButton) buttons->addStretch();
        buttons->addWidget(button);
    }
    rebuildIndexCheckBox->setFocusPolicy(Qt::NoFocus);
    layout.addLayout(buttons, row + 1, 1);
    layout.addWidget(rebuildIndexCheckBox, row + 2, 1);

    auto* const note =
        new QLabel("New folders are watched for changes from the next start of Brimwick on.", restartOffer);
    note->setWordWrap(true);
    restartButton->setAutoDefault(false);
    restartButton->setFocusPolicy(Qt::NoFocus);
    auto* const offer = new QHBoxLayout(restartOffer);
    offer->setContentsMargins(0, gap / 2, 0, 0);
    offer->addWidget(note, 1);
    offer->addWidget(restartButton);
    restartOffer->hide();
    layout.addWidget(restartOffer, row + 3, 1);
}

void PreferencesControls::addField(QGridLayout& layout, Mode mode, const QString& caption) {
    const int row = 2 + 2 * mode;
    auto* const label = new QLabel(caption, &window_);
    label->setBuddy(field(mode));
    field(mode)->setAccessibleName("Hot key to " + caption.chopped(1).toLower());
    layout.addWidget(label, row, 0, Qt::AlignRight | Qt::AlignVCenter);
    layout.addWidget(field(mode), row, 1);
    layout.addWidget(&errorLabel(mode), row + 1, 1);
}

BWTextView* PreferencesControls::field(Mode mode) const {
    switch (mode) {
    case BWModeMove:
        return hotKeyTextView;
    case BWModeCopy:
        return bwCopyModeHotKeyTextView;
    default:
        return openModeHotKeyTextView;
    }
}

ErrorLabel& PreferencesControls::errorLabel(Mode mode) {
    switch (mode) {
    case BWModeMove:
        return *hotKeyErrorMessageTextField;
    case BWModeCopy:
        return *bwCopyModeHotKeyErrorMessageTextField;
    default:
        return *openModeHotKeyErrorMessageTextField;
    }
}

void PreferencesControls::showHotKey(Mode mode, const std::string& text) {
    field(mode)->setText(QString::fromStdString(text));
}

void PreferencesControls::showRefusal(Mode mode, const std::string& refusal) {
    errorLabel(mode).setNote(refusal.empty() ? QString() : "Not active. " + QString::fromStdString(refusal));
}

} // namespace brimwick
