#include "preferences/BWButton.h"

#include <QStyleOptionButton>

namespace brimwick {

void BWButton::setFocusMarkHidden(bool hidden) {
    focusMarkIsHidden_ = hidden;
    update();
}

void BWButton::initStyleOption(QStyleOptionButton* option) const {
    QCheckBox::initStyleOption(option);
    option->state.setFlag(QStyle::State_HasFocus, hasFocus() && !focusMarkIsHidden_);
    // Shown after a click as well: the keys act on this box now.
    option->state |= QStyle::State_KeyboardFocusChange;
}

} // namespace brimwick
