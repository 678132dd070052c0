#include "preferences/BWTextView.h"

#include <QPainter>

namespace brimwick {

namespace {

constexpr int charactersWide = 16;
constexpr int room = 7;
constexpr qreal ringWidth = 2.5;
constexpr qreal roundness = 5;

} // namespace

BWTextView::BWTextView(QWidget* parent) : QWidget(parent) {
    setFocusPolicy(Qt::StrongFocus);
    // What is pressed here is a hot key, and must not be taken for the start of an accented letter.
    setAttribute(Qt::WA_InputMethodEnabled, false);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    QFont large = font();
    large.setPointSizeF(large.pointSizeF() * 1.15);
    setFont(large);
}

void BWTextView::setText(const QString& text) {
    text_ = text;
    setAccessibleDescription(text);
    update();
}

void BWTextView::setFocusRingHidden(bool hidden) {
    focusRingIsHidden_ = hidden;
    update();
}

QSize BWTextView::sizeHint() const {
    const QFontMetrics metrics = fontMetrics();
    return {metrics.averageCharWidth() * charactersWide, metrics.height() + 2 * room};
}

void BWTextView::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF edge = QRectF(rect()).adjusted(ringWidth, ringWidth, -ringWidth, -ringWidth);
    const bool focused = !focusRingIsHidden_;
    QColor line = palette().color(QPalette::WindowText);
    line.setAlphaF(0.35F);
    painter.setPen(focused ? QPen(palette().color(QPalette::Highlight), ringWidth) : QPen(line, 1));
    painter.setBrush(palette().color(QPalette::Base));
    painter.drawRoundedRect(edge, roundness, roundness);
    painter.setPen(palette().color(QPalette::Text));
    painter.drawText(edge, Qt::AlignCenter, text_);
}

} // namespace brimwick
