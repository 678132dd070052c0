#pragma once

#include "preferences/BWButton.h"
#include "preferences/FocusRing.h"

#include <array>

class QButtonGroup;
class QGridLayout;
class QLabel;
class QRadioButton;

namespace brimwick {

/// A check box with the key of the preference that it mirrors.
struct NotificationCheckBox {
    BWButton* control;
    const char* key;
};

/// The notifications tab: which events are told by a sound, the icon or the progress panel, and how the icon
/// moves. It owns its controls.
class NotificationsTab : public QWidget {
  public:
    explicit NotificationsTab(QWidget* parent);

    BWButton* notificationSoundOnMoveCheckBox;
    BWButton* notificationSoundOnCopyCheckBox;
    BWButton* notificationSoundOnOpenCheckBox;
    BWButton* notificationSoundOnInitializeIndexCheckBox;
    BWButton* notificationSoundOnRebuildIndexForPreferenceCheckBox;
    BWButton* notificationSoundOnRebuildIndexForSubfolderCheckBox;
    BWButton* notificationAnimateOnInitializeIndexCheckBox;
    BWButton* notificationAnimateOnRebuildIndexForPreferenceCheckBox;
    BWButton* notificationAnimateOnRebuildIndexForSubfolderCheckBox;
    BWButton* notificationPopupOnInitializeIndexCheckBox;
    BWButton* notificationPopupOnRebuildIndexForPreferenceCheckBox;
    BWButton* notificationPopupOnRebuildIndexForSubfolderCheckBox;
    QButtonGroup* notificationAnimationStyleMatrix;
    QRadioButton* notificationAnimationStylePulseButtonCell;
    QRadioButton* notificationAnimationStyleRotateButtonCell;
    QLabel* notificationAnimationStyleExample;
    FocusRing* notificationAnimationStyleFocusRing;

    /// Sounds, animation, panel: the order in which they are read and written.
    const std::array<NotificationCheckBox, 12>& checkBoxes() const { return checkBoxes_; }

  private:
    QWidget* actionSounds();
    QWidget* indexGrid();
    QWidget* animationStyle();

    std::array<NotificationCheckBox, 12> checkBoxes_;
};

} // namespace brimwick
