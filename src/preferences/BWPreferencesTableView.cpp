#include "preferences/BWPreferencesTableView.h"

#include "model/FileUrl.h"
#include "preferences/FocusRing.h"

#include <QContextMenuEvent>
#include <QDropEvent>
#include <QMimeData>
#include <QPainter>
#include <QUrl>

namespace brimwick {

namespace {

constexpr int roomAroundHint = 16;
constexpr auto hint = "No folders are indexed yet. Choose \"Add...\" and then a folder in which you keep "
                      "things, such as Documents; it is found with all folders in it.";

std::vector<std::string> pathsIn(const QMimeData& data) {
    std::vector<std::string> paths;
    for (const QUrl& url : data.urls())
        if (auto path = pathOfFileUrl(url.toEncoded().toStdString())) paths.push_back(std::move(*path));
    return paths;
}

/// The folders stay where they are, whatever the file manager proposes.
void acceptAsCopy(QDropEvent& event) {
    if (!event.possibleActions().testFlag(Qt::CopyAction) || pathsIn(*event.mimeData()).empty()) {
        event.ignore();
        return;
    }
    event.setDropAction(Qt::CopyAction);
    event.accept();
}

} // namespace

BWPreferencesTableView::BWPreferencesTableView(QWidget* parent) : QListWidget(parent), menu_(this) {
    setAccessibleName("Indexed folders");
    setTextElideMode(Qt::ElideMiddle);
    // Otherwise each of thousands would be measured before the window is there.
    setUniformItemSizes(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setAcceptDrops(true);
}

int BWPreferencesTableView::selectedRow() const {
    const QModelIndexList rows = selectionModel()->selectedRows();
    return rows.isEmpty() ? -1 : rows.first().row();
}

void BWPreferencesTableView::selectRow(int row) {
    setCurrentRow(row, QItemSelectionModel::ClearAndSelect);
    scrollToItem(item(row));
}

void BWPreferencesTableView::describeRows() {
    setAccessibleDescription(count() == 0 ? hint : QString());
}

void BWPreferencesTableView::focusInEvent(QFocusEvent* event) {
    QListWidget::focusInEvent(event);
    // So that the first press of an arrow key selects the first row, not the second.
    if (selectedRow() < 0) selectionModel()->clearCurrentIndex();
    viewport()->update();
}

void BWPreferencesTableView::focusOutEvent(QFocusEvent* event) {
    QListWidget::focusOutEvent(event);
    viewport()->update();
}

void BWPreferencesTableView::dragEnterEvent(QDragEnterEvent* event) {
    acceptAsCopy(*event);
}

void BWPreferencesTableView::dragMoveEvent(QDragMoveEvent* event) {
    acceptAsCopy(*event);
}

void BWPreferencesTableView::dropEvent(QDropEvent* event) {
    acceptAsCopy(*event);
    if (event->isAccepted()) dropped_(pathsIn(*event->mimeData()));
}

void BWPreferencesTableView::paintEvent(QPaintEvent* event) {
    QListWidget::paintEvent(event);
    QPainter painter(viewport());
    if (hasFocus()) {
        const QPen pen = focusRingPen(*this);
        const qreal half = pen.widthF() / 2;
        painter.setPen(pen);
        painter.drawRect(QRectF(viewport()->rect()).adjusted(half, half, -half, -half));
    }
    if (count() > 0) return;
    painter.setPen(palette().color(QPalette::PlaceholderText));
    painter.drawText(viewport()->rect().adjusted(roomAroundHint, 0, -roomAroundHint, 0),
                     Qt::AlignCenter | Qt::TextWordWrap, hint);
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
