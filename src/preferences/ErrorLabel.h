#pragma once

#include "hotkeys/HotKeyErrorMessage.h"

#include <QLabel>

namespace brimwick {

/// The line below a hot key's field: a red message that fades away or, as long as there is none, a standing
/// note.
class ErrorLabel : public QLabel, public HotKeyErrorLabel {
  public:
    /// Without message and note.
    explicit ErrorLabel(QWidget* parent);

    void showMessage(const std::string& message) override;
    void setAlpha(double alpha) override;
    void hideMessage() override;
    bool showsMessage() const { return showsMessage_; }
    double alpha() const { return alpha_; }

    /// Empty for none.
    void setNote(const QString& note);

  private:
    void showNote();

    QString note_;
    bool showsMessage_ = false;
    double alpha_ = 1;
};

} // namespace brimwick
