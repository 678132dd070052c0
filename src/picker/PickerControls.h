#pragma once

#include "model/Mode.h"

class QAction;
class QGroupBox;
class QLabel;
class QLineEdit;
class QMenu;
class QPushButton;
class QWidget;

namespace brimwick {

class BWWickTableView;
class BWWickWindow;

/// The controls of the picker's window, which owns them all.
struct PickerControls {
    explicit PickerControls(BWWickWindow& window);

    /// Puts everything in its place for the window's present size.
    void layOut(Mode mode) const;

    BWWickWindow* wickWindow;
    QGroupBox* selectedFoldersBox;
    BWWickTableView* selectedFilesTableView;
    QLabel* searchFieldCaption;
    QLineEdit* searchField;
    BWWickTableView* searchResultsTableView;
    /// The prompt's container, which lies on the empty list, and the prompt itself.
    QWidget* typeTheNameMessage;
    QLabel* typeTheNameMessageText;
    QPushButton* wickWindowCloseButton;
    QPushButton* wickWindowShowInFinderButton;
    QPushButton* wickWindowMoveButton;
    /// Covers the window until the first index is complete.
    QLabel* wickWindowCurtain;

    QMenu* wickContextMenu;
    QAction* wickContextMenuMoveFileMenuItem;
    QAction* wickContextMenuShowInFinderMenuItem;
    QMenu* selectedFilesContextMenu;
    QAction* selectedFilesContextMenuShowInFinderMenuItem;

  private:
    void buildTables() const;
    void buildMenus();
    void nameForAssistance() const;
    void orderForTab() const;
};

} // namespace brimwick
