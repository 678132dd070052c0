#include "preferences/NotificationsTab.h"

#include <QButtonGroup>
#include <QGroupBox>
#include <QLabel>
#include <QRadioButton>
#include <QVBoxLayout>

namespace brimwick {

namespace {

constexpr int gap = 10;
constexpr int exampleSize = 32;

} // namespace

NotificationsTab::NotificationsTab(QWidget* parent)
    : QWidget(parent), notificationSoundOnMoveCheckBox(new BWButton("&Moving files", this)),
      notificationSoundOnCopyCheckBox(new BWButton("&Copying files", this)),
      notificationSoundOnOpenCheckBox(new BWButton("&Opening a folder", this)),
      notificationSoundOnInitializeIndexCheckBox(new BWButton("Play a sound", this)),
      notificationSoundOnRebuildIndexForPreferenceCheckBox(new BWButton("Play a sound", this)),
      notificationSoundOnRebuildIndexForSubfolderCheckBox(new BWButton("Play a sound", this)),
      notificationAnimateOnInitializeIndexCheckBox(new BWButton("Animate icon", this)),
      notificationAnimateOnRebuildIndexForPreferenceCheckBox(new BWButton("Animate icon", this)),
      notificationAnimateOnRebuildIndexForSubfolderCheckBox(new BWButton("Animate icon", this)),
      notificationPopupOnInitializeIndexCheckBox(new BWButton("Show progress", this)),
      notificationPopupOnRebuildIndexForPreferenceCheckBox(new BWButton("Show progress", this)),
      notificationPopupOnRebuildIndexForSubfolderCheckBox(new BWButton("Show progress", this)),
      notificationAnimationStyleMatrix(new QButtonGroup(this)),
      notificationAnimationStylePulseButtonCell(new QRadioButton("Pulse", this)),
      notificationAnimationStyleRotateButtonCell(new QRadioButton("Rotate", this)),
      notificationAnimationStyleExample(new QLabel(this)),
      notificationAnimationStyleFocusRing(new FocusRing(this)),
      checkBoxes_{{{notificationSoundOnMoveCheckBox, "NotificationSoundOnMove"},
                   {notificationSoundOnCopyCheckBox, "NotificationSoundOnCopy"},
                   {notificationSoundOnOpenCheckBox, "NotificationSoundOnOpen"},
                   {notificationSoundOnInitializeIndexCheckBox, "NotificationSoundOnInitializeIndex"},
                   {notificationSoundOnRebuildIndexForPreferenceCheckBox,
                    "NotificationSoundOnRebuildIndexForPreference"},
                   {notificationSoundOnRebuildIndexForSubfolderCheckBox,
                    "NotificationSoundOnRebuildIndexForSubfolder"},
                   {notificationAnimateOnInitializeIndexCheckBox, "NotificationAnimateOnInitializeIndex"},
                   {notificationAnimateOnRebuildIndexForPreferenceCheckBox,
                    "NotificationAnimateOnRebuildIndexForPreference"},
                   {notificationAnimateOnRebuildIndexForSubfolderCheckBox,
                    "NotificationAnimateOnRebuildIndexForSubfolder"},
                   {notificationPopupOnInitializeIndexCheckBox, "NotificationPopupOnInitializeIndex"},
                   {notificationPopupOnRebuildIndexForPreferenceCheckBox,
                    "NotificationPopupOnRebuildIndexForPreference"},
                   {notificationPopupOnRebuildIndexForSubfolderCheckBox,
                    "NotificationPopupOnRebuildIndexForSubfolder"}}} {
    auto* const layout = new QVBoxLayout(this);
    layout->setSpacing(gap);
    layout->addWidget(actionSounds());
    layout->addWidget(indexGrid());
    layout->addWidget(animationStyle());
    layout->addStretch();
}

QWidget* NotificationsTab::actionSounds() {
    auto* const group = new QGroupBox("Play a sound after", this);
    auto* const layout = new QHBoxLayout(group);
    for (BWButton* const box :
         {notificationSoundOnMoveCheckBox, notificationSoundOnCopyCheckBox, notificationSoundOnOpenCheckBox})
        layout->addWidget(box, 1);
    return group;
}

QWidget* NotificationsTab::indexGrid() {
    struct Event {
        const char* caption;
        std::array<BWButton*, 3> kinds;
    };
    const std::array<Event, 3> events{
        {{"For the first time:",
          {notificationAnimateOnInitializeIndexCheckBox, notificationSoundOnInitializeIndexCheckBox,
           notificationPopupOnInitializeIndexCheckBox}},
         {"Because an indexed folder was added or removed:",
          {notificationAnimateOnRebuildIndexForPreferenceCheckBox,
           notificationSoundOnRebuildIndexForPreferenceCheckBox,
           notificationPopupOnRebuildIndexForPreferenceCheckBox}},
         {"Because a folder in one of them changed:",
          {notificationAnimateOnRebuildIndexForSubfolderCheckBox,
           notificationSoundOnRebuildIndexForSubfolderCheckBox,
           notificationPopupOnRebuildIndexForSubfolderCheckBox}}}};
    auto* const group = new QGroupBox("When the folders are indexed", this);
    auto* const layout = new QGridLayout(group);
    layout->setHorizontalSpacing(gap);
    int row = 0;
    for (const Event& event : events) {
        layout->addWidget(new QLabel(event.caption, group), row, 0, 1, 3);
        int column = 0;
        for (BWButton* const box : event.kinds) {
            box->setAccessibleName(box->text() + " when the folders are indexed " +
                                   QString(event.caption).chopped(1).toLower());
            layout->addWidget(box, row + 1, column);
            layout->setColumnStretch(column++, 1);
        }
        row += 2;
    }
    return group;
}

QWidget* NotificationsTab::animationStyle() {
    auto* const group = new QGroupBox("How the icon is animated", this);
    auto* const layout = new QHBoxLayout(group);
    auto* const inRing = new QHBoxLayout(notificationAnimationStyleFocusRing);
    int tag = 0;
    for (QRadioButton* const style :
         {notificationAnimationStylePulseButtonCell, notificationAnimationStyleRotateButtonCell}) {
        // The ring around both shows the focus.
        style->setFocusPolicy(Qt::NoFocus);
        notificationAnimationStyleMatrix->addButton(style, tag++);
        inRing->addWidget(style);
    }
    notificationAnimationStyleExample->setFixedSize(exampleSize, exampleSize);
    notificationAnimationStyleExample->setAccessibleName("An example of the animation");
    layout->addWidget(notificationAnimationStyleFocusRing);
    layout->addWidget(notificationAnimationStyleExample);
    layout->addStretch();
    return group;
}

} // namespace brimwick
