#include "app/Brimwick.h"

#include "model/SupportFolder.h"

#include <random>

namespace brimwick {

Brimwick::Brimwick(const Ports& ports, WorkRunner& workRunner, const std::string& homeDirectory,
                   const Resources& resources)
    : icons_(resources), notifications_(ports.notifications, ports.mainLoop),
      model_(ports, notifications_, resources, homeDirectory, [] { return std::random_device()(); }),
      fileJournal_(fileJournalPath(homeDirectory)),
      view_(model_, {fileJournal_, workRunner}, ports, notifications_, notificationCenter_, icons_,
            resources),
      delegate_(view_), recovery_(fileJournal_, ports.mainLoop, notifications_) {
    delegate_.awakeFromNib();
}

} // namespace brimwick
