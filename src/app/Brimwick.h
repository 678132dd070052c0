#pragma once

#include "actions/FileJournal.h"
#include "actions/RecoveryThread.h"
#include "app/BWApplicationDelegate.h"
#include "app/BWModel.h"
#include "app/BWView.h"
#include "platform/ports/Ports.h"

namespace brimwick {

/// The whole program: every service and controller, in the order in which they depend on each other.
class Brimwick {
  public:
    /// The ports and the runner outlive the program; `homeDirectory` is the user's, `resources` what ships.
    Brimwick(const Ports& ports, WorkRunner& workRunner, const std::string& homeDirectory,
             const Resources& resources);

    BWModel& model() { return model_; }
    BWView& view() { return view_; }

  private:
    WorkspaceNotificationCenter notificationCenter_;
    EntryIcons icons_;
    UserNotifications notifications_;
    BWModel model_;
    FileJournal fileJournal_;
    BWView view_;
    BWApplicationDelegate delegate_;
    RecoveryThread recovery_;
};

} // namespace brimwick
