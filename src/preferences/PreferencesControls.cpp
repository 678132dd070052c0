#include "preferences/PreferencesControls.h"

#include "preferences/BWPreferencesWindow.h"

#include <QGridLayout>
#include <QListWidget>
#include <QPushButton>

namespace brimwick {

namespace {

constexpr int margin = 18;
constexpr int gap = 10;
constexpr int listHeight = 150;
constexpr int widthOfWindow = 520;

} // namespace

PreferencesControls::PreferencesControls(BWPreferencesWindow& window)
    : hotKeyTextView(new BWTextView(&window)), bwCopyModeHotKeyTextView(new BWTextView(&window)),
      openModeHotKeyTextView(new BWTextView(&window)), hotKeyErrorMessageTextField(new ErrorLabel(&window)),
      bwCopyModeHotKeyErrorMessageTextField(new ErrorLabel(&window)),
      openModeHotKeyErrorMessageTextField(new ErrorLabel(&window)),
      indexedFoldersTableView(new QListWidget(&window)),
      preferencesWindowCloseButton(new QPushButton("Close", &window)), window_(window) {
    auto* const layout = new QGridLayout(&window);
    layout->setContentsMargins(margin, margin, margin, margin);
    layout->setHorizontalSpacing(gap);
    layout->setVerticalSpacing(2);
    layout->setColumnStretch(1, 1);

    auto* const hint = new QLabel("To change a hot key, select its field and press the new one.", &window);
    hint->setWordWrap(true);
    layout->addWidget(hint, 0, 0, 1, 2);
    layout->setRowMinimumHeight(1, gap);
    addField(*layout, BWModeMove, "Move files:");
    addField(*layout, BWModeCopy, "Copy files:");
    addField(*layout, BWModeOpen, "Open a folder:");

    auto* const caption = new QLabel("Indexed folders:", &window);
    caption->setBuddy(indexedFoldersTableView);
    layout->addWidget(caption, 8, 0, Qt::AlignRight | Qt::AlignTop);
    indexedFoldersTableView->setMinimumHeight(listHeight);
    indexedFoldersTableView->setAccessibleName("Indexed folders");
    indexedFoldersTableView->setTextElideMode(Qt::ElideMiddle);
    indexedFoldersTableView->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    layout->addWidget(indexedFoldersTableView, 8, 1);
    layout->setRowMinimumHeight(9, gap);
    layout->addWidget(preferencesWindowCloseButton, 10, 1, Qt::AlignRight);
    preferencesWindowCloseButton->setAutoDefault(false);
    window.setMinimumWidth(widthOfWindow);
    window.adjustSize();
}

void PreferencesControls::addField(QGridLayout& layout, Mode mode, const QString& caption) {
    const int row = 2 + 2 * mode;
    auto* const label = new QLabel(caption, &window_);
    label->setBuddy(field(mode));
    field(mode)->setAccessibleName(caption);
    layout.addWidget(label, row, 0, Qt::AlignRight | Qt::AlignVCenter);
    layout.addWidget(field(mode), row, 1);
    layout.addWidget(&errorLabel(mode), row + 1, 1);
}

BWTextView* PreferencesControls::field(Mode mode) const {
    switch (mode) {
    case BWModeMove:
        return hotKeyTextView;
    case BWModeCopy:
        return bwCopyModeHotKeyTextView;
    default:
        return openModeHotKeyTextView;
    }
}

ErrorLabel& PreferencesControls::errorLabel(Mode mode) {
    switch (mode) {
    case BWModeMove:
        return *hotKeyErrorMessageTextField;
    case BWModeCopy:
        return *bwCopyModeHotKeyErrorMessageTextField;
    default:
        return *openModeHotKeyErrorMessageTextField;
    }
}

void PreferencesControls::showHotKey(Mode mode, const std::string& text) {
    field(mode)->setText(QString::fromStdString(text));
}

void PreferencesControls::showRefusal(Mode mode, const std::string& refusal) {
    errorLabel(mode).setNote(refusal.empty() ? QString() : "Not active. " + QString::fromStdString(refusal));
}

} // namespace brimwick
