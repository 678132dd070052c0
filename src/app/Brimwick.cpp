#include "app/Brimwick.h"

#include <random>

namespace brimwick {

Brimwick::Brimwick(const Ports& ports, const std::string& homeDirectory, const Resources& resources)
    : icons_(resources), notifications_(ports.notifications, ports.mainLoop),
      model_(ports, notifications_, resources, homeDirectory, [] { return std::random_device()(); }),
      view_(model_, ports, notifications_, notificationCenter_, icons_, resources), delegate_(view_) {
    delegate_.awakeFromNib();
}

} // namespace brimwick
