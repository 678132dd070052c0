#pragma once

#include <QListWidget>
#include <QMenu>

#include <functional>
#include <string>
#include <vector>

namespace brimwick {

/// The list of indexed folders. Folders can be dropped onto it; while it is empty, it says what to do.
class BWPreferencesTableView : public QListWidget {
  public:
    explicit BWPreferencesTableView(QWidget* parent);

    /// Negative for none.
    int selectedRow() const;
    /// Selects a row and scrolls it into view.
    void selectRow(int row);
    /// To be called when rows came or went: without any, a screen reader is told what to do, too.
    void describeRows();
    QMenu& menu() { return menu_; }
    /// Called right before the menu opens for the selected row.
    void setMenuWillOpen(std::function<void()> handler) { menuWillOpen_ = std::move(handler); }
    /// Called after a drop, with the exact paths of what was dropped. Whether they are folders is left open.
    void setDropped(std::function<void(std::vector<std::string>)> handler) { dropped_ = std::move(handler); }

  protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

  private:
    QMenu menu_;
    std::function<void()> menuWillOpen_ = [] {};
    std::function<void(std::vector<std::string>)> dropped_ = [](const std::vector<std::string>&) {};
};

} // namespace brimwick
