#pragma once

#include "model/Icon.h"
#include "model/Resources.h"

#include <QIcon>

#include <optional>

namespace brimwick {

/// The images of entries, from the desktop's icon theme and the program's own resources. Main thread only.
class EntryIcons {
  public:
    explicit EntryIcons(Resources resources) : resources_(std::move(resources)) {}

    /// A null icon for none and for a resource that does not ship.
    QIcon image(const std::optional<Icon>& icon) const;

  private:
    QIcon fileImage(const std::string& path) const;

    Resources resources_;
};

} // namespace brimwick
