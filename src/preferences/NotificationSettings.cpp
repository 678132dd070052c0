#include "preferences/NotificationSettings.h"

#include "preferences/NotificationsTab.h"
#include "preferences/PreferencesFocus.h"

#include <QButtonGroup>
#include <QRadioButton>

namespace brimwick {

NotificationSettings::NotificationSettings(NotificationSettingsSurroundings surroundings,
                                           NotificationsTab& tab, PreferencesFocus& focus)
    : surroundings_(std::move(surroundings)), tab_(tab), focus_(focus) {
    for (const auto& [control, key] : tab_.checkBoxes())
        QObject::connect(control, &QCheckBox::clicked, &tab_, [this, sender = control] {
            readNotificationPreferencesFromPreferencesWindow(sender);
        });
    QObject::connect(tab_.notificationAnimationStyleMatrix, &QButtonGroup::idClicked, &tab_, [this] {
        readNotificationPreferencesFromPreferencesWindow(tab_.notificationAnimationStyleFocusRing);
    });
}

void NotificationSettings::populate() {
    for (const auto& [control, key] : tab_.checkBoxes())
        control->setChecked(surroundings_.preferences.integerPreferenceWithKey(key) != 0);
    populateAnimationStyleRadioButtons();
}

void NotificationSettings::populateAnimationStyleRadioButtons() {
    const std::int64_t style = surroundings_.preferences.animationStyle();
    (style < 1 ? tab_.notificationAnimationStylePulseButtonCell
               : tab_.notificationAnimationStyleRotateButtonCell)
        ->setChecked(true);
    surroundings_.animateExampleIcon(style);
}

void NotificationSettings::readNotificationPreferencesFromPreferencesWindow(QWidget* sender) {
    focus_.focusControl(sender);
    PropertyListDictionary& preferences = surroundings_.preferences.preferences();
    for (const auto& [control, key] : tab_.checkBoxes()) preferences.set(key, {control->isChecked()});
    surroundings_.preferences.setAnimationStyle(tab_.notificationAnimationStyleMatrix->checkedId() == 0 ? 0
                                                                                                        : 1);
    surroundings_.animateExampleIcon(surroundings_.preferences.animationStyle());
    surroundings_.preferences.savePreferences();
}

void NotificationSettings::toggleCheckBox(std::int32_t place) {
    auto* const box = dynamic_cast<QCheckBox*>(focus_.notificationsControl(place));
    if (box == nullptr) return;
    box->setChecked(!box->isChecked());
    readNotificationPreferencesFromPreferencesWindow(box);
}

void NotificationSettings::toggleAnimationStyle() {
    surroundings_.preferences.setAnimationStyle(surroundings_.preferences.animationStyle() == 0 ? 1 : 0);
    populateAnimationStyleRadioButtons();
}

} // namespace brimwick
