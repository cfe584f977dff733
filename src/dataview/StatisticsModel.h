#pragma once

#include "controls/SharedWidths.h"
#include "dataview/Statistics.h"

#include <QAbstractTableModel>

#include <vector>

namespace tessaro {

/// The rows of DataStats: indicators, opened down to units and subpopulations by the mark before them.
class StatisticsModel final : public QAbstractTableModel {
    Q_OBJECT

  public:
    static constexpr int MaxCols = 9;
    static constexpr int kMarkRole = Qt::UserRole + 1; ///< picture of a row's mark, in the column of its level
    static constexpr int kNameColumn = 3;              ///< from 0; the marks and the indent stand before it

    explicit StatisticsModel(QObject* parent = nullptr);

    void SetLines(std::vector<StatsLine> lines);
    /// Opens a shown row by one level, or closes all below it. Rows without children stay.
    void Toggle(int row);
    [[nodiscard]] bool HasChildren(int row) const;
    [[nodiscard]] bool IsOpen(int row) const;
    [[nodiscard]] StatsLevel LevelOf(int row) const;
    /// The longest texts of a column, those of closed rows among them.
    [[nodiscard]] LongestTexts Longest(int column) const;
    /// Heads and colours again.
    void Refresh();

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  private:
    [[nodiscard]] const StatsLine& LineOf(int row) const;
    /// Picture of the mark in a cell; empty without one.
    [[nodiscard]] QString MarkOf(int row, int column) const;
    /// The end of the lines below this one: the next line of the same or a higher level.
    [[nodiscard]] int EndOf(int line) const;

    std::vector<StatsLine> lines_;
    std::vector<bool> open_;
    std::vector<int> shown_; ///< lines in view
};

} // namespace tessaro
