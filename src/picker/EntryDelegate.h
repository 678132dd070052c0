#pragma once

#include <QStyledItemDelegate>

namespace brimwick {

/// Paints a folder as its icon, its name and, dimmed below it, where it lies, so that equal names can be told
/// apart.
class EntryDelegate : public QStyledItemDelegate {
  public:
    /// Of the model: the folder that holds the entry, as text.
    static constexpr int LocationRole = Qt::UserRole;
    static constexpr int rowHeight = 48;

    using QStyledItemDelegate::QStyledItemDelegate;
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
};

} // namespace brimwick
