#include "preferences/BWTextView.h"

#include <QPainter>

namespace brimwick {

namespace {

constexpr int charactersWide = 16;
constexpr int room = 7;

} // namespace

BWTextView::BWTextView(QWidget* parent) : FocusRing(parent) {
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

QSize BWTextView::sizeHint() const {
    const QFontMetrics metrics = fontMetrics();
    return {metrics.averageCharWidth() * charactersWide, metrics.height() + 2 * room};
}

void BWTextView::paintEvent(QPaintEvent* /*event*/) {
    QColor line = palette().color(QPalette::WindowText);
    line.setAlphaF(0.35F);
    drawRoundedEdge(*this, ringIsHidden() ? QPen(line, 1) : focusRingPen(*this),
                    palette().color(QPalette::Base));
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::Text));
    painter.drawText(rect(), Qt::AlignCenter, text_);
}

} // namespace brimwick
