#pragma once

#include <QCheckBox>

namespace brimwick {

/// A check box of the notifications tab. Its mark of the focus can be taken away while it keeps the focus.
class BWButton : public QCheckBox {
  public:
    using QCheckBox::QCheckBox;

    void setFocusMarkHidden(bool hidden);
    bool focusMarkIsHidden() const { return focusMarkIsHidden_; }

  protected:
    void initStyleOption(QStyleOptionButton* option) const override;

  private:
    bool focusMarkIsHidden_ = false;
};

} // namespace brimwick
