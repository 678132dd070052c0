#include "ui/support/ProgramTest.h"

#include <QLabel>

namespace brimwick {

QString ProgramTest::prompt() {
    return controls().typeTheNameMessageText->text();
}

bool ProgramTest::promptIsShown() {
    return controls().typeTheNameMessage->isVisible() && controls().typeTheNameMessageText->isVisible();
}

} // namespace brimwick
