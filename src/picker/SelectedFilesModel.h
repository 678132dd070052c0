#pragma once

#include "model/BWSelectedFileOrFolder.h"
#include "picker/EntryIcons.h"

#include <QAbstractListModel>

#include <vector>

namespace brimwick {

/// The items that are moved or copied, as rows. Main thread only.
class SelectedFilesModel : public QAbstractListModel {
  public:
    /// Both must outlive the model.
    SelectedFilesModel(const std::vector<BWSelectedFileOrFolder>& files, const EntryIcons& icons)
        : files_(files), icons_(icons) {}

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    /// To be called after each change of the list.
    void reloadData();

  private:
    const std::vector<BWSelectedFileOrFolder>& files_;
    const EntryIcons& icons_;
};

} // namespace brimwick
