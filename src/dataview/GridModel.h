#pragma once

#include "dataview/PageBuilder.h"

#include <QAbstractTableModel>

#include <array>
#include <functional>
#include <memory>
#include <unordered_map>
#include <vector>

namespace tessaro {

/// The rows of the data grid, which may be millions. Grid row r (counted from 0 here) shows row r of the query, until
/// rows are removed or sorted in the grid. The texts of at most 50,000 rows are in memory; when there are more, those
/// not shown for the longest time are dropped and read again when they are shown. Rows that the load has not reached
/// yet are read in the same way when the user scrolls to them; the load counts them later all the same.
class GridModel final : public QAbstractTableModel {
    Q_OBJECT

  public:
    /// Reads rows of the query on demand: first row, number of rows.
    using Fetch = std::function<std::vector<GridRow>(qint64, int)>;
    enum Role {
        FootnoteRole = Qt::UserRole, ///< true in the Datavalue column of a row with a footnote while footnotes show
        SpareRole,                   ///< true in the spare last row
    };
    /// A complete grid of fewer rows is sorted in place.
    static constexpr int kInGridSortLimit = 50001;

    explicit GridModel(QObject* parent = nullptr);

    void SetFetch(Fetch fetch) { fetch_ = std::move(fetch); }

    /// Empties the grid: MaxRows 0, no sort.
    void Clear();
    /// All rows, with the spare last one while a load is running.
    [[nodiscard]] int MaxRows() const { return maxRows_; }
    /// Rows that show values: MaxRows without the spare one.
    [[nodiscard]] int ValueRows() const { return maxRows_ - (hasSpare_ ? 1 : 0); }
    [[nodiscard]] bool HasSpareRow() const { return hasSpare_; }
    /// Adds blank rows before the spare last row. The first call adds that row too.
    void InsertRows(int count);
    /// Takes the spare last row away; without one nothing happens.
    void DeleteSpareRow();
    /// Puts rows into the block that begins at row `first` (from 0) of the query.
    void PutBlock(qint64 first, std::vector<GridRow> rows);
    /// Appends rows to a complete grid; their texts are read when they are shown.
    void AppendRows(int count);
    /// Removes grid rows (from 0), given in any order.
    void RemoveRows(std::vector<int> rows);
    /// Rows removed since the grid was emptied, and the rows of the query that the grid has had, removed ones included.
    [[nodiscard]] int RemovedRows() const { return static_cast<int>(removed_.size()); }
    [[nodiscard]] int QueryRows() const { return ValueRows() + RemovedRows(); }
    /// Text of a footnote in the language; empty for one that isn't there.
    [[nodiscard]] QString FootnoteText(qint64 footNId) const;
    /// Row of the query (from 0) that a grid row shows, or will show once it is loaded.
    [[nodiscard]] qint64 QueryRowOf(int row) const;
    /// The fields of a grid row (from 0), read now if they are not in memory; nullptr for the spare row and beyond.
    [[nodiscard]] const GridRow* RowAt(int row) const;

    /// After a sort in the grid its rows don't follow the query any more.
    [[nodiscard]] bool IsSortedInGrid() const { return !order_.empty(); }
    /// Sorts the rows by a column (from 1), texts ignoring case; equal rows keep their order.
    void SortInGrid(int column, bool ascending);

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    /// Reads heads and preferences (colours, footnotes, number form) again.
    void Refresh();

  private:
    static constexpr int kBlockRows = 50;
    static constexpr std::size_t kMostBlocks = 1000;
    struct Block {
        std::array<GridRow, kBlockRows> rows;
        quint64 filled = 0; ///< bit i: rows[i] is there
        quint64 used = 0;
    };

    [[nodiscard]] int GridRowOf(qint64 queryRow) const;
    void TakeAway(int first, int last);
    Block& BlockOf(qint64 queryRow) const;
    void DropOldest() const;
    void FetchBlock(Block& block, qint64 queryRow) const;
    [[nodiscard]] QVariant TextOf(const GridRow& row, int column) const;
    [[nodiscard]] QVariant ToolTipOf(const GridRow& row, int column) const;

    Fetch fetch_;
    int maxRows_ = 0;
    bool hasSpare_ = false;
    std::vector<qint32> removed_; ///< query rows taken away, ascending
    std::vector<qint32> order_;   ///< after a sort in the grid: query row of each grid row; else empty
    mutable std::unordered_map<qint64, std::unique_ptr<Block>> blocks_;
    mutable quint64 clock_ = 0;
    mutable QHash<qint64, QString> footnotes_;
};

} // namespace tessaro
