#include "preferences/PreferencesFocus.h"

#include "preferences/PreferencesControls.h"

#include <QFocusEvent>
#include <QPushButton>

#include <algorithm>
#include <ranges>

namespace brimwick {

namespace {

/// Tells when a control that has no hook of its own takes the focus.
class FocusObserver : public QObject {
  public:
    FocusObserver(QWidget* control, std::function<void(Qt::FocusReason)> focused)
        : focused_(std::move(focused)) {
        control->installEventFilter(this);
    }
    bool eventFilter(QObject* /*control*/, QEvent* event) override {
        if (event->type() == QEvent::FocusIn) focused_(static_cast<const QFocusEvent*>(event)->reason());
        return false;
    }

  private:
    std::function<void(Qt::FocusReason)> focused_;
};

} // namespace

PreferencesFocus::PreferencesFocus(PreferencesControls& controls, PreferencesPlace& place)
    : controls_(controls),
      place_(place), preferencesWindowTabOrder_{controls.hotKeyTextView, controls.bwCopyModeHotKeyTextView,
                                                controls.openModeHotKeyTextView,
                                                controls.indexedFoldersTableView,
                                                controls.preferencesWindowCloseButton} {
    const NotificationsTab& tab = *controls.notificationsTab;
    preferencesWindowNotificationsTabOrder_ = {tab.notificationSoundOnMoveCheckBox,
                                               tab.notificationSoundOnCopyCheckBox,
                                               tab.notificationSoundOnOpenCheckBox,
                                               tab.notificationAnimateOnInitializeIndexCheckBox,
                                               tab.notificationSoundOnInitializeIndexCheckBox,
                                               tab.notificationPopupOnInitializeIndexCheckBox,
                                               tab.notificationAnimateOnRebuildIndexForPreferenceCheckBox,
                                               tab.notificationSoundOnRebuildIndexForPreferenceCheckBox,
                                               tab.notificationPopupOnRebuildIndexForPreferenceCheckBox,
                                               tab.notificationAnimateOnRebuildIndexForSubfolderCheckBox,
                                               tab.notificationSoundOnRebuildIndexForSubfolderCheckBox,
                                               tab.notificationPopupOnRebuildIndexForSubfolderCheckBox,
                                               tab.notificationAnimationStyleFocusRing,
                                               controls.preferencesWindowCloseButton};
    const auto observe = [this](QWidget* control) {
        observers_.push_back(
            std::make_unique<FocusObserver>(control, [this, control](Qt::FocusReason reason) {
                // Nothing was chosen when a menu came and went, or the window, unless the click that brought
                // it to the front came first.
                if (reason != Qt::PopupFocusReason &&
                    (reason != Qt::ActiveWindowFocusReason || control != withKeyboard_))
                    wasFocused(control);
            }));
    };
    std::ranges::for_each(preferencesWindowTabOrder_, observe);
    // The close button stands in both orders.
    std::ranges::for_each(preferencesWindowNotificationsTabOrder_ |
                              std::views::take(PreferencesControl::notificationsCloseButton),
                          observe);
}

PreferencesFocus::~PreferencesFocus() = default;

std::span<QWidget* const> PreferencesFocus::selectedTabOrder() const {
    if (place_.selectedTab == PreferencesTab::General) return preferencesWindowTabOrder_;
    return preferencesWindowNotificationsTabOrder_;
}

void PreferencesFocus::wasFocused(QWidget* control) {
    const auto order = selectedTabOrder();
    const auto found = std::ranges::find(order, control);
    if (found == order.end()) return;
    place_.preferencesWindowFocusedControlIndex = static_cast<std::int32_t>(found - order.begin());
    place_.listHasFocus = control == controls_.indexedFoldersTableView;
    showFocus(control);
}

void PreferencesFocus::moveFocus(bool forward) {
    const std::size_t count = selectedTabOrder().size();
    const auto index = static_cast<std::size_t>(place_.preferencesWindowFocusedControlIndex);
    focusPlace((index + (forward ? 1 : count - 1)) % count);
}

void PreferencesFocus::focusPlace(std::size_t index) {
    QWidget* const control = selectedTabOrder()[index];
    place_.preferencesWindowFocusedControlIndex = static_cast<std::int32_t>(index);
    // The ring of the styles stands for them: the box before keeps the keyboard.
    if (control != controls_.notificationsTab->notificationAnimationStyleFocusRing)
        control->setFocus(Qt::TabFocusReason);
    showFocus(control);
}

void PreferencesFocus::focusControl(QWidget* control) {
    if (control != controls_.notificationsTab->notificationAnimationStyleFocusRing)
        control->setFocus(Qt::OtherFocusReason);
    wasFocused(control);
}

QWidget* PreferencesFocus::notificationsControl(std::int32_t index) const {
    const auto position = static_cast<std::size_t>(index);
    return position < preferencesWindowNotificationsTabOrder_.size()
               ? preferencesWindowNotificationsTabOrder_[position]
               : nullptr;
}

void PreferencesFocus::showFocus(QWidget* control) {
    const NotificationsTab& tab = *controls_.notificationsTab;
    const bool isStyle = control == tab.notificationAnimationStyleFocusRing;
    for (FocusRing* const ring : std::initializer_list<FocusRing*>{
             controls_.hotKeyTextView, controls_.bwCopyModeHotKeyTextView, controls_.openModeHotKeyTextView,
             tab.notificationAnimationStyleFocusRing})
        ring->setRingHidden(ring != control);
    if (!isStyle) withKeyboard_ = control;
    for (const auto& [box, key] : tab.checkBoxes()) box->setFocusMarkHidden(isStyle);
    controls_.preferencesWindowCloseButton->setDefault(control == controls_.preferencesWindowCloseButton);
    if (control == controls_.indexedFoldersTableView && place_.selectedTab == PreferencesTab::General)
        control->setFocus(Qt::OtherFocusReason);
}

void PreferencesFocus::handleTabViewChange() {
    place_.listHasFocus = false;
    place_.preferencesWindowFocusedControlIndex = 0;
    QWidget* const first = selectedTabOrder().front();
    first->setFocus(Qt::OtherFocusReason);
    showFocus(first);
}

} // namespace brimwick
