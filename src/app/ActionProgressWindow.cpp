#include "app/ActionProgressWindow.h"

#include "actions/ProgressText.h"
#include "picker/DisplayText.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

namespace brimwick {

namespace {

constexpr int contentWidth = 440;
/// The bar knows no 64-bit numbers.
constexpr int barSteps = 1000;

} // namespace

ActionProgressWindow::ActionProgressWindow(const QString& title, TransferProgress& progress,
                                           QElapsedTimer begun)
    : QWidget(nullptr,
              Qt::Dialog | Qt::WindowTitleHint | Qt::WindowCloseButtonHint | Qt::WindowStaysOnTopHint),
      progress_(progress), begun_(begun), item_(new QLabel(this)), bar_(new QProgressBar(this)),
      text_(new QLabel(this)), cancelButton_(new QPushButton("Cancel", this)) {
    setWindowTitle(title);
    item_->setTextFormat(Qt::PlainText);
    text_->setTextFormat(Qt::PlainText);
    bar_->setTextVisible(false);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(item_);
    layout->addWidget(bar_);
    auto* lowest = new QHBoxLayout;
    lowest->addWidget(text_, 1);
    lowest->addWidget(cancelButton_);
    layout->addLayout(lowest);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    bar_->setFixedWidth(contentWidth);
    item_->setFixedWidth(contentWidth);
    // A key that was meant for the window before is not to cancel anything.
    cancelButton_->setFocusPolicy(Qt::NoFocus);
    connect(cancelButton_, &QPushButton::clicked, this, &ActionProgressWindow::cancel);
    refresh();
}

void ActionProgressWindow::refresh() {
    const QString name = displayText(progress_.item());
    item_->setText(item_->fontMetrics().elidedText(name, Qt::ElideMiddle, contentWidth));
    const std::int64_t total = progress_.totalBytes();
    const std::int64_t bytes = progress_.bytes();
    // Without a maximum it shows only that something goes on.
    bar_->setMaximum(total > 0 ? barSteps : 0);
    if (total > 0) bar_->setValue(static_cast<int>(barSteps * std::min(1.0, double(bytes) / double(total))));
    if (cancelled_) return;
    text_->setText(
        QString::fromStdString(progressText(bytes, total, std::chrono::milliseconds(begun_.elapsed()))));
}

void ActionProgressWindow::cancel() {
    progress_.cancel();
    cancelled_ = true;
    cancelButton_->setEnabled(false);
    text_->setText("Cancelling…");
}

void ActionProgressWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && !event->isAutoRepeat())
        cancel();
    else
        QWidget::keyPressEvent(event);
}

void ActionProgressWindow::closeEvent(QCloseEvent* event) {
    // It goes when the work is at its end.
    event->ignore();
    cancel();
}

} // namespace brimwick
