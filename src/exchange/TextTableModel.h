#pragma once

#include "exchange/ImportReport.h"

#include <QAbstractTableModel>

namespace tessaro {

/// A table of texts to be read; its rows are made as they are shown.
class TextTableModel final : public QAbstractTableModel {
    Q_OBJECT

  public:
    using QAbstractTableModel::QAbstractTableModel;

    void Show(ImportTable table);

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  private:
    ImportTable table_;
};

} // namespace tessaro
