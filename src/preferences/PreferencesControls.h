#pragma once

#include "hotkeys/HotKeyFields.h"
#include "preferences/BWTextView.h"
#include "preferences/ErrorLabel.h"

class QGridLayout;
class QListWidget;
class QPushButton;

namespace brimwick {

class BWPreferencesWindow;

/// The controls of the preferences window, which owns them all.
class PreferencesControls : public HotKeyFieldsFace {
  public:
    explicit PreferencesControls(BWPreferencesWindow& window);

    BWTextView* hotKeyTextView;
    BWTextView* bwCopyModeHotKeyTextView;
    BWTextView* openModeHotKeyTextView;
    ErrorLabel* hotKeyErrorMessageTextField;
    ErrorLabel* bwCopyModeHotKeyErrorMessageTextField;
    ErrorLabel* openModeHotKeyErrorMessageTextField;
    QListWidget* indexedFoldersTableView;
    QPushButton* preferencesWindowCloseButton;

    void showHotKey(Mode mode, const std::string& text) override;
    void showRefusal(Mode mode, const std::string& refusal) override;
    ErrorLabel& errorLabel(Mode mode) override;

    BWTextView* field(Mode mode) const;

  private:
    /// A row of the layout for the field of one mode.
    void addField(QGridLayout& layout, Mode mode, const QString& caption);

    BWPreferencesWindow& window_;
};

} // namespace brimwick
