#include "picker/EntryDelegate.h"

#include <QApplication>
#include <QPainter>

namespace brimwick {

namespace {

constexpr int iconSize = 32;
constexpr int padding = 8;
constexpr double locationFontScale = 0.88;
constexpr double locationOpacity = 0.7;

} // namespace

void EntryDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const {
    QStyleOptionViewItem item = option;
    initStyleOption(&item, index);
    const QString name = item.text;
    const QIcon icon = item.icon;
    item.text.clear();
    item.icon = {};
    item.state.setFlag(QStyle::State_HasFocus, false);
    // The list answers to keys of the search field, so its selection is never a faded one.
    item.state.setFlag(QStyle::State_Active, true);
    item.palette.setCurrentColorGroup(QPalette::Active);
    const QWidget* widget = option.widget;
    const QStyle* style = widget != nullptr ? widget->style() : QApplication::style();
    style->drawControl(QStyle::CE_ItemViewItem, &item, painter, widget);

    const QRect iconRect(item.rect.left() + padding, item.rect.center().y() - iconSize / 2 + 1, iconSize,
                         iconSize);
    icon.paint(painter, iconRect);

    const bool selected = item.state.testFlag(QStyle::State_Selected);
    painter->save();
    painter->setPen(item.palette.color(selected ? QPalette::HighlightedText : QPalette::Text));
    const QFontMetrics nameMetrics(item.font);
    QFont locationFont = item.font;
    locationFont.setPointSizeF(locationFont.pointSizeF() * locationFontScale);
    const QFontMetrics locationMetrics(locationFont);
    const int left = iconRect.right() + 1 + padding;
    const int width = item.rect.right() - padding - left;
    const int textHeight = nameMetrics.height() + locationMetrics.height();
    const int top = item.rect.top() + (item.rect.height() - textHeight) / 2;

    painter->setFont(item.font);
    painter->drawText(QRect(left, top, width, nameMetrics.height()), Qt::AlignVCenter | Qt::TextSingleLine,
                      nameMetrics.elidedText(name, Qt::ElideRight, width));
    painter->setFont(locationFont);
    painter->setOpacity(locationOpacity);
    const QString location = index.data(LocationRole).toString();
    painter->drawText(QRect(left, top + nameMetrics.height(), width, locationMetrics.height()),
                      Qt::AlignVCenter | Qt::TextSingleLine,
                      locationMetrics.elidedText(location, Qt::ElideMiddle, width));
    painter->restore();
}

} // namespace brimwick
