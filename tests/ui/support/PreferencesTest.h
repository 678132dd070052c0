#pragma once

#include "ui/support/ProgramTest.h"
#include "ui/support/ScanCodes.h"

#include <QKeyEvent>
#include <QWindow>

namespace brimwick {

/// The preferences window of the whole program, with keys as the desktop delivers them.
class PreferencesTest : public ProgramTest {
  protected:
    bool send(QEvent::Type type, quint32 scanCode, int key, Qt::KeyboardModifiers modifiers) {
        QKeyEvent event(type, key, modifiers, scanCode, 0, 0, QString());
        event.ignore();
        QCoreApplication::sendEvent(window().windowHandle(), &event);
        return event.isAccepted();
    }
    void press(quint32 scanCode, int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        send(QEvent::KeyPress, scanCode, key, modifiers);
        send(QEvent::KeyRelease, scanCode, key, modifiers);
    }
    void tab(bool back = false) {
        press(scanTab, back ? Qt::Key_Backtab : Qt::Key_Tab, back ? Qt::ShiftModifier : Qt::NoModifier);
    }
    std::int32_t focusedIndex() { return preferences().place().preferencesWindowFocusedControlIndex; }
    BWPreferencesWindow& window() { return preferences().preferencesWindow(); }
    const PreferencesControls& shown() { return preferences().controls(); }
};

} // namespace brimwick
