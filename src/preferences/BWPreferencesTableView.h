#pragma once

#include <QListWidget>
#include <QMenu>

#include <functional>

namespace brimwick {

/// The list of indexed folders.
class BWPreferencesTableView : public QListWidget {
  public:
    explicit BWPreferencesTableView(QWidget* parent);

    /// Negative for none.
    int selectedRow() const;
    /// Selects a row and scrolls it into view.
    void selectRow(int row);
    QMenu& menu() { return menu_; }
    /// Called right before the menu opens for the selected row.
    void setMenuWillOpen(std::function<void()> handler) { menuWillOpen_ = std::move(handler); }

  protected:
    void contextMenuEvent(QContextMenuEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;

  private:
    QMenu menu_;
    std::function<void()> menuWillOpen_ = [] {};
};

} // namespace brimwick
