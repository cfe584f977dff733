#pragma once

#include "gallery/GalleryFolder.h"

#include <QAbstractListModel>

namespace tessaro {

/// The browser's list: subfolders and workbooks of one folder.
class GalleryModel final : public QAbstractListModel {
    Q_OBJECT

  public:
    enum Role { KeyRole = Qt::UserRole, RowRole };

    using QAbstractListModel::QAbstractListModel;

    void SetEntries(std::vector<GalleryEntry> entries);
    [[nodiscard]] const GalleryEntry& At(int row) const { return entries_.at(static_cast<std::size_t>(row)); }
    [[nodiscard]] int Count() const { return static_cast<int>(entries_.size()); }
    /// The number of workbooks among the entries.
    [[nodiscard]] int PresentationCount() const;
    /// Row of the file of this name; -1 when there is none.
    [[nodiscard]] int RowOfFile(const QString& file) const;
    void Remove(int row);
    /// Reads size and time of a file again, after it has been written.
    void ReadFileAgain(int row, const QString& folder);
    /// Determines the kinds of all workbooks again, after a change of language.
    void TellKindsAgain();

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;

  private:
    std::vector<GalleryEntry> entries_;
};

} // namespace tessaro
