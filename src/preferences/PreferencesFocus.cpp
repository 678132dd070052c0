#include "preferences/PreferencesFocus.h"

#include "preferences/PreferencesControls.h"

#include <QFocusEvent>
#include <QPushButton>

namespace brimwick {

namespace {

/// Tells when a control that has no hook of its own takes the focus.
class FocusObserver : public QObject {
  public:
    FocusObserver(QWidget* control, std::function<void()> focused) : focused_(std::move(focused)) {
        control->installEventFilter(this);
    }
    bool eventFilter(QObject* /*control*/, QEvent* event) override {
        if (event->type() != QEvent::FocusIn) return false;
        // Nothing was chosen when only the window, or a menu before it, came and went.
        const Qt::FocusReason reason = static_cast<const QFocusEvent*>(event)->reason();
        if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason) focused_();
        return false;
    }

  private:
    std::function<void()> focused_;
};

} // namespace

PreferencesFocus::PreferencesFocus(PreferencesControls& controls, PreferencesPlace& place)
    : controls_(controls),
      place_(place), preferencesWindowTabOrder_{controls.hotKeyTextView, controls.bwCopyModeHotKeyTextView,
                                                controls.openModeHotKeyTextView,
                                                controls.indexedFoldersTableView,
                                                controls.preferencesWindowCloseButton} {
    for (std::size_t position = 0; position < preferencesWindowTabOrder_.size(); ++position)
        observers_.push_back(
            std::make_unique<FocusObserver>(preferencesWindowTabOrder_[position], [this, position] {
                place_.preferencesWindowFocusedControlIndex = static_cast<std::int32_t>(position);
                place_.listHasFocus =
                    preferencesWindowTabOrder_[position] == controls_.indexedFoldersTableView;
                showFocus(preferencesWindowTabOrder_[position]);
            }));
}

PreferencesFocus::~PreferencesFocus() = default;

void PreferencesFocus::moveFocus(bool forward) {
    const auto count = static_cast<std::int32_t>(preferencesWindowTabOrder_.size());
    std::int32_t& index = place_.preferencesWindowFocusedControlIndex;
    index = (index + (forward ? 1 : count - 1)) % count;
    QWidget* const control = preferencesWindowTabOrder_[static_cast<std::size_t>(index)];
    control->setFocus(Qt::TabFocusReason);
    showFocus(control);
}

void PreferencesFocus::showFocus(QWidget* control) {
    for (BWTextView* const field :
         {controls_.hotKeyTextView, controls_.bwCopyModeHotKeyTextView, controls_.openModeHotKeyTextView})
        field->setFocusRingHidden(field != control);
    controls_.preferencesWindowCloseButton->setDefault(control == controls_.preferencesWindowCloseButton);
    if (control == controls_.indexedFoldersTableView) control->setFocus(Qt::OtherFocusReason);
}

void PreferencesFocus::handleTabViewChange() {
    place_.preferencesWindowFocusedControlIndex = 0;
    place_.listHasFocus = false;
    controls_.hotKeyTextView->setFocus(Qt::OtherFocusReason);
    showFocus(controls_.hotKeyTextView);
}

} // namespace brimwick
