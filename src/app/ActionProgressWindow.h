#pragma once

#include "actions/TransferProgress.h"

#include <QElapsedTimer>
#include <QWidget>

class QLabel;
class QProgressBar;
class QPushButton;

namespace brimwick {

/// Shows how far the work on some files is, and lets the user cancel it. Main thread only.
class ActionProgressWindow : public QWidget {
  public:
    /// `title` says what is done; the progress outlives the window. The time counts from `begun`.
    ActionProgressWindow(const QString& title, TransferProgress& progress, QElapsedTimer begun);

    /// Shows the present state.
    void refresh();

    QPushButton& cancelButton() const { return *cancelButton_; }

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

  private:
    void cancel();

    TransferProgress& progress_;
    QElapsedTimer begun_;
    QLabel* item_;
    QProgressBar* bar_;
    QLabel* text_;
    QPushButton* cancelButton_;
    bool cancelled_ = false;
};

} // namespace brimwick
