#pragma once

#include "model/Icon.h"
#include "model/Resources.h"

#include <QHash>
#include <QIcon>
#include <QString>
#include <QStyle>

#include <optional>

namespace brimwick {

/// The images of entries, from the desktop's icon theme and the program's own resources. Main thread only.
class EntryIcons {
  public:
    explicit EntryIcons(Resources resources) : resources_(std::move(resources)) {}

    /// A null icon for none and for a resource that does not ship.
    QIcon image(const std::optional<Icon>& icon) const;

  private:
    QIcon folderImage() const;
    QIcon fileImage(const std::string& path) const;
    QIcon themeIcon(const QString& name, const QString& genericName, QStyle::StandardPixmap last) const;

    Resources resources_;
    /// Those of the theme that were shown already: rows are painted at every key press.
    mutable QHash<QString, QIcon> themeIcons_;
    mutable QString theme_;
};

} // namespace brimwick
