#include "preferences/BWPreferencesTableView.h"

#include <QContextMenuEvent>

namespace brimwick {

BWPreferencesTableView::BWPreferencesTableView(QWidget* parent) : QListWidget(parent), menu_(this) {
    setAccessibleName("Indexed folders");
    setTextElideMode(Qt::ElideMiddle);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
}

int BWPreferencesTableView::selectedRow() const {
    const QModelIndexList rows = selectionModel()->selectedRows();
    return rows.isEmpty() ? -1 : rows.first().row();
}

void BWPreferencesTableView::selectRow(int row) {
    setCurrentRow(row, QItemSelectionModel::ClearAndSelect);
    scrollToItem(item(row));
}

void BWPreferencesTableView::focusInEvent(QFocusEvent* event) {
    QListWidget::focusInEvent(event);
    // So that the first press of an arrow key selects the first row, not the second.
    if (selectedRow() < 0) selectionModel()->clearCurrentIndex();
}

void BWPreferencesTableView::contextMenuEvent(QContextMenuEvent* event) {
    const bool byMouse = event->reason() == QContextMenuEvent::Mouse;
    if (byMouse) {
        if (const QModelIndex pointed = indexAt(viewport()->mapFromGlobal(event->globalPos()));
            pointed.isValid())
            selectRow(pointed.row());
    }
    menuWillOpen_();
    const QPoint below = selectedRow() < 0 ? QPoint() : visualItemRect(item(selectedRow())).bottomLeft();
    menu_.popup(byMouse ? event->globalPos() : viewport()->mapToGlobal(below));
}

} // namespace brimwick
