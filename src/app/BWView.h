#pragma once

#include "app/BWModel.h"
#include "app/KeyDispatcher.h"
#include "app/KeyEventReader.h"
#include "app/RequestDispatcher.h"
#include "app/StatusMenu.h"
#include "feedback/UserNotifications.h"
#include "model/RebuildObserver.h"
#include "model/WorkspaceNotificationCenter.h"
#include "picker/EntryIcons.h"
#include "picker/PickerController.h"
#include "platform/ports/Ports.h"
#include "preferences/PreferencesController.h"
#include "update/UpdateController.h"

namespace brimwick {

/// The main controller: links the model with the windows and brings the interface up. Main thread only.
class BWView : public RebuildObserver {
  public:
    /// Everything outlives the view.
    BWView(BWModel& model, const ActionServices& actions, const Ports& ports,
           UserNotifications& notifications, WorkspaceNotificationCenter& notificationCenter,
           const EntryIcons& icons, Resources resources);

    BWView(const BWView&) = delete;
    BWView& operator=(const BWView&) = delete;
    ~BWView() override;

    /// Brings the interface up and asks for the first index. Later calls do nothing.
    void initializeUserInterface();
    bool preferencesUIHasBeenInitialized() const { return preferencesUIHasBeenInitialized_; }

    PickerController& picker() { return picker_; }
    StatusMenu& statusMenu() { return statusMenu_; }
    PreferencesController& preferences() { return preferences_; }
    KeyDispatcher& keyDispatcher() { return keyDispatcher_; }
    KeyEventReader& keyEvents() { return keyEvents_; }

    void showRebuildIndexProgressIndicator() override;
    void hideRebuildIndexProgressIndicator() override;
    void animateIconUsingMethodWithToolTip(bool example, std::int64_t method,
                                           const std::string& toolTip) override;
    void sendUserNotification(const std::string& text) override { notifications_.sendUserNotification(text); }
    void playDingSound() override { model_.sounds().playDingSound(); }
    bool pickerWindowIsVisible() const override { return picker_.isVisible(); }
    void search() override { picker_.search(); }
    void forgetSearchResults() override { model_.folderSearch().forgetResults(); }
    void enableWickWindow() override { picker_.enableWickWindow(); }
    void enableDisableWickWindowControls() override { picker_.enableDisableWickWindowControls(); }
    bool actionsEnabled() const override { return actionsEnabled_; }
    void enableActions() override;

  private:
    void initializeNotificationCenter();
    void hotKeyWasReleased(Mode mode);
    void showPreferencesInPlaceOfPicker();
    void setMenuItemKeyEquivalents();

    BWModel& model_;
    UserNotifications& notifications_;
    WorkspaceNotificationCenter& notificationCenter_;
    MainLoop& mainLoop_;
    KeyboardLayout& keyboardLayout_;
    Resources resources_;
    PreferencesController preferences_;
    UpdateController updates_;
    PickerController picker_;
    StatusMenu statusMenu_;
    KeyDispatcher keyDispatcher_;
    KeyEventReader keyEvents_;
    RequestDispatcher requests_;
    bool preferencesUIHasBeenInitialized_ = false;
    bool actionsEnabled_ = false;
};

} // namespace brimwick
