#pragma once

#include <QWidget>

namespace brimwick {

/// A field that shows a text in its middle and takes the focus, but no typing.
class BWTextView : public QWidget {
  public:
    explicit BWTextView(QWidget* parent);

    void setText(const QString& text);
    const QString& text() const { return text_; }
    /// The ring around the field that shows that it has the focus.
    void setFocusRingHidden(bool hidden);
    bool focusRingIsHidden() const { return focusRingIsHidden_; }

    QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QString text_;
    bool focusRingIsHidden_ = true;
};

} // namespace brimwick
