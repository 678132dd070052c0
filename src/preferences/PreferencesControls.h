#pragma once

#include "hotkeys/HotKeyFields.h"
#include "preferences/BWPreferencesTableView.h"
#include "preferences/BWTextView.h"
#include "preferences/ErrorLabel.h"
#include "preferences/NotificationsTab.h"

class QAction;
class QCheckBox;
class QGridLayout;
class QLabel;
class QPushButton;
class QTabWidget;

namespace brimwick {

class BWPreferencesWindow;

/// The controls of the preferences window, which owns them all.
class PreferencesControls : public HotKeyFieldsFace {
  public:
    explicit PreferencesControls(BWPreferencesWindow& window);

    /// The general tab and the notifications tab, in this order.
    QTabWidget* preferencesWindowTabView;
    NotificationsTab* notificationsTab;
    BWTextView* hotKeyTextView;
    BWTextView* bwCopyModeHotKeyTextView;
    BWTextView* openModeHotKeyTextView;
    ErrorLabel* hotKeyErrorMessageTextField;
    ErrorLabel* bwCopyModeHotKeyErrorMessageTextField;
    ErrorLabel* openModeHotKeyErrorMessageTextField;
    BWPreferencesTableView* indexedFoldersTableView;
    /// Over the list, as long as the index is being rebuilt.
    QLabel* indexedFoldersCurtain;
    QPushButton* plusButton;
    QPushButton* minusButton;
    QPushButton* showInFinderButton;
    QPushButton* addTrashFolderButton;
    QCheckBox* rebuildIndexCheckBox;
    /// Shown when the list has folders that are not watched.
    QWidget* restartOffer;
    QPushButton* restartButton;
    QPushButton* preferencesWindowCloseButton;
    QAction* preferencesContextMenuShowInFinderMenuItem;
    QAction* preferencesContextMenuRemoveFolderMenuItem;

    void showHotKey(Mode mode, const std::string& text) override;
    void showRefusal(Mode mode, const std::string& refusal) override;
    ErrorLabel& errorLabel(Mode mode) override;

    BWTextView* field(Mode mode) const;

  private:
    QWidget* generalTab();
    /// A row of the layout for the field of one mode.
    void addField(QGridLayout& layout, Mode mode, const QString& caption);
    void addIndexedFolders(QGridLayout& layout, int row);

    BWPreferencesWindow& window_;
};

} // namespace brimwick
