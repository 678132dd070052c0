#include "preferences/FocusRing.h"

#include <QPainter>

namespace brimwick {

namespace {

constexpr qreal ringWidth = 2.5;
constexpr qreal roundness = 5;

} // namespace

QPen focusRingPen(const QWidget& widget) {
    return {widget.palette().color(QPalette::Highlight), ringWidth};
}

void drawRoundedEdge(QWidget& widget, const QPen& pen, const QBrush& fill) {
    QPainter painter(&widget);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(pen);
    painter.setBrush(fill);
    painter.drawRoundedRect(QRectF(widget.rect()).adjusted(ringWidth, ringWidth, -ringWidth, -ringWidth),
                            roundness, roundness);
}

void FocusRing::setRingHidden(bool hidden) {
    ringIsHidden_ = hidden;
    update();
}

void FocusRing::paintEvent(QPaintEvent* /*event*/) {
    if (!ringIsHidden_) drawRoundedEdge(*this, focusRingPen(*this), Qt::NoBrush);
}

} // namespace brimwick
