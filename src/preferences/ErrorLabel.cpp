#include "preferences/ErrorLabel.h"

#include <QAccessible>

namespace brimwick {

ErrorLabel::ErrorLabel(QWidget* parent) : QLabel(parent) {
    setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
    // A line that comes and goes would move what lies below.
    setMinimumHeight(2 * fontMetrics().lineSpacing());
}

void ErrorLabel::showMessage(const std::string& message) {
    showsMessage_ = true;
    setText(QString::fromStdString(message));
    setAlpha(alpha_);
    QAccessibleEvent alert(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

void ErrorLabel::setAlpha(double alpha) {
    alpha_ = alpha;
    QColor colour = Qt::red;
    colour.setAlphaF(static_cast<float>(alpha));
    QPalette coloured = palette();
    coloured.setColor(QPalette::WindowText, colour);
    setPalette(coloured);
}

void ErrorLabel::hideMessage() {
    showsMessage_ = false;
    alpha_ = 1;
    showNote();
}

void ErrorLabel::setNote(const QString& note) {
    note_ = note;
    if (!showsMessage_) showNote();
}

void ErrorLabel::showNote() {
    setPalette({});
    setText(note_);
}

} // namespace brimwick
