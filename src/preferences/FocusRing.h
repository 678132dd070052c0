#pragma once

#include <QPen>
#include <QWidget>

namespace brimwick {

/// The pen of a ring that shows that a widget has the focus.
QPen focusRingPen(const QWidget& widget);
/// Draws the rounded edge of a widget with room for that ring, and fills it.
void drawRoundedEdge(QWidget& widget, const QPen& pen, const QBrush& fill);

/// A ring around the controls that lie in it, shown when they have the focus as one.
class FocusRing : public QWidget {
  public:
    /// Without the ring.
    explicit FocusRing(QWidget* parent) : QWidget(parent) {}

    void setRingHidden(bool hidden);
    bool ringIsHidden() const { return ringIsHidden_; }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    bool ringIsHidden_ = true;
};

} // namespace brimwick
