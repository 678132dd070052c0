#pragma once

#include "model/FolderSearch.h"
#include "picker/EntryIcons.h"

#include <QAbstractListModel>

namespace brimwick {

/// The search results as a list of rows; a row is made when it is painted. Main thread only.
class SearchResultsModel : public QAbstractListModel {
  public:
    /// `home` is shown as "~" where folders lie below it.
    SearchResultsModel(const FolderSearch& search, const EntryIcons& icons, std::string home);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    /// To be called after each search.
    void reloadData();

  private:
    QString location(const std::string& path) const;

    const FolderSearch& search_;
    const EntryIcons& icons_;
    std::string home_;
};

} // namespace brimwick
