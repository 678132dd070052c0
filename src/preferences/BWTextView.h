#pragma once

#include "preferences/FocusRing.h"

namespace brimwick {

/// A field that shows a text in its middle and takes the focus, but no typing.
class BWTextView : public FocusRing {
  public:
    explicit BWTextView(QWidget* parent);

    void setText(const QString& text);
    const QString& text() const { return text_; }

    QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QString text_;
};

} // namespace brimwick
