#pragma once

#include <QTableView>

#include <functional>

class QMenu;

namespace brimwick {

/// A list of one column without a grid. A right click on a row selects it before the menu opens; below the
/// last row it keeps the selection.
class BWWickTableView : public QTableView {
  public:
    explicit BWWickTableView(QWidget* parent);

    void setRowHeight(int height);
    /// The menu is owned by its own parent.
    void setMenu(QMenu* menu) { menu_ = menu; }
    /// The menu for a click at this place of the list; null for none. Selects the row that is there.
    QMenu* menuForEvent(QPoint position);
    /// The selected row; negative when there is none.
    int selectedRow() const;

  protected:
    void contextMenuEvent(QContextMenuEvent* event) override;

  private:
    QMenu* menu_ = nullptr;
};

} // namespace brimwick
