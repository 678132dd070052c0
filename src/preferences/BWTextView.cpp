#include "preferences/BWTextView.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QPainter>

namespace brimwick {

namespace {

constexpr int charactersWide = 16;
constexpr int room = 7;

/// What a screen reader is told of a field.
class AccessibleField : public QAccessibleWidget {
  public:
    explicit AccessibleField(BWTextView* field) : QAccessibleWidget(field, QAccessible::HotkeyField) {}
    QString text(QAccessible::Text kind) const override {
        const auto* const field = static_cast<const BWTextView*>(widget());
        return kind == QAccessible::Value ? field->text() : QAccessibleWidget::text(kind);
    }
};

/// The toolkit takes over what is made.
QAccessibleInterface* makeAccessibleField(const QString& /*className*/, QObject* object) {
    auto* const field = dynamic_cast<BWTextView*>(object);
    return field == nullptr ? nullptr : new AccessibleField(field);
}

} // namespace

BWTextView::BWTextView(QWidget* parent) : FocusRing(parent) {
    QAccessible::installFactory(makeAccessibleField);
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
