#include "picker/SelectedFilesModel.h"

#include "picker/DisplayText.h"

namespace brimwick {

int SelectedFilesModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(files_.size());
}

QVariant SelectedFilesModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    const BWSelectedFileOrFolder& file = files_.at(static_cast<std::size_t>(index.row()));
    switch (role) {
    case Qt::DisplayRole:
        return displayText(file.name().value_or(""));
    case Qt::DecorationRole:
        return icons_.image(file.icon());
    case Qt::ToolTipRole:
        return displayText(file.path()).toHtmlEscaped();
    default:
        return {};
    }
}

void SelectedFilesModel::reloadData() {
    beginResetModel();
    endResetModel();
}

} // namespace brimwick
