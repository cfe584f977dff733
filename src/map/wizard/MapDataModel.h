#pragma once

#include "map/MapAreas.h"

#include <QAbstractTableModel>

#include <vector>

namespace tessaro {

/// The rows of `_MapData` as the list of the theme shows them, in six columns; sorted by any of them, values as
/// numbers.
class MapDataModel final : public QAbstractTableModel {
    Q_OBJECT

  public:
    using QAbstractTableModel::QAbstractTableModel;

    void SetAreas(const MapAreas& areas);
    /// The area of a row of the list.
    [[nodiscard]] const MapArea& AreaAt(int row) const {
        return rows_[static_cast<std::size_t>(order_[static_cast<std::size_t>(row)])];
    }

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    void sort(int column, Qt::SortOrder order) override;

  private:
    std::vector<MapArea> rows_;
    std::vector<int> order_;
};

} // namespace tessaro
