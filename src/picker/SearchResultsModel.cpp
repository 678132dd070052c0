#include "picker/SearchResultsModel.h"

#include "picker/DisplayText.h"
#include "picker/EntryDelegate.h"

namespace brimwick {

SearchResultsModel::SearchResultsModel(const FolderSearch& search, const EntryIcons& icons, std::string home)
    : search_(search), icons_(icons), home_(std::move(home)) {}

int SearchResultsModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(search_.searchResults().entries.size());
}

QVariant SearchResultsModel::data(const QModelIndex& index, int role) const {
    const auto row = static_cast<std::size_t>(index.row());
    if (!index.isValid() || row >= search_.searchResults().entries.size()) return {};
    switch (role) {
    case Qt::DisplayRole:
        return displayText(search_.displayNameAt(row));
    case Qt::DecorationRole:
        return icons_.image(search_.iconAt(row));
    case Qt::ToolTipRole:
        return displayText(search_.pathAt(row)).toHtmlEscaped();
    case Qt::AccessibleTextRole:
        return displayText(search_.displayNameAt(row)) + ", " + location(search_.pathAt(row));
    case EntryDelegate::LocationRole:
        return location(search_.pathAt(row));
    default:
        return {};
    }
}

void SearchResultsModel::reloadData() {
    beginResetModel();
    endResetModel();
}

QString SearchResultsModel::location(const std::string& path) const {
    std::string folder = path.substr(0, path.rfind('/'));
    if (folder.empty()) return "/";
    const bool atHome = folder == home_ || folder.starts_with(home_ + "/");
    return displayText(atHome ? "~" + folder.substr(home_.size()) : folder);
}

} // namespace brimwick
