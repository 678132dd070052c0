#include "picker/BWWickTableView.h"

#include <QContextMenuEvent>
#include <QHeaderView>
#include <QMenu>

namespace brimwick {

BWWickTableView::BWWickTableView(QWidget* parent) : QTableView(parent) {
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setShowGrid(false);
    setTabKeyNavigation(false);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    horizontalHeader()->hide();
    horizontalHeader()->setStretchLastSection(true);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
}

void BWWickTableView::setRowHeight(int height) {
    verticalHeader()->setMinimumSectionSize(height);
    verticalHeader()->setDefaultSectionSize(height);
}

QMenu* BWWickTableView::menuForEvent(QPoint position) {
    const QModelIndex index = indexAt(position);
    if (index.isValid()) setCurrentIndex(index);
    return menu_;
}

int BWWickTableView::selectedRow() const {
    const QModelIndexList rows = selectionModel()->selectedRows();
    return rows.isEmpty() ? -1 : rows.front().row();
}

void BWWickTableView::contextMenuEvent(QContextMenuEvent* event) {
    const bool byKeyboard = event->reason() == QContextMenuEvent::Keyboard;
    const QPoint place = byKeyboard ? visualRect(currentIndex()).center() : event->pos();
    // The menu key means the selected row, wherever the pointer is.
    QMenu* menu = byKeyboard ? menu_ : menuForEvent(place);
    if (menu != nullptr) menu->popup(viewport()->mapToGlobal(place));
}

} // namespace brimwick
