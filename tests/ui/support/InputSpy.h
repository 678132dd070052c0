#pragma once

#include <QApplication>
#include <QEvent>
#include <QMouseEvent>
#include <QWidget>
#include <QWindow>

#include <utility>

namespace brimwick {

/// Sees which presses of keys and buttons reach a widget. Works from its making to its end.
class InputSpy : public QObject {
  public:
    InputSpy() { qApp->installEventFilter(this); }

    /// Whether one did since this was asked last.
    bool tookReached() { return std::exchange(reached_, false); }

  protected:
    bool eventFilter(QObject* receiver, QEvent* event) override {
        const bool isPress = event->type() == QEvent::KeyPress || event->type() == QEvent::MouseButtonPress;
        if (isPress && receiver->isWidgetType()) reached_ = true;
        return false;
    }

  private:
    bool reached_ = false;
};

/// Whether a click into a window comes to what is in it.
inline bool clickReaches(QWidget& window) {
    InputSpy spy;
    const QPointF place(5, 5);
    QMouseEvent click(QEvent::MouseButtonPress, place, place, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(window.windowHandle(), &click);
    return spy.tookReached();
}

} // namespace brimwick
