#pragma once

#include <QString>

#include <string>

namespace brimwick {

/// The path of a folder that was chosen in a dialog. The dialog cannot show names that are no UTF-8 as they
/// are; they are found again on the disk by how they look. The encoded text itself where nothing is found.
std::string exactPathOfShown(const QString& shownPath);

} // namespace brimwick
