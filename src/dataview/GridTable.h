#pragma once

#include "controls/DataTable.h"

#include <QTimer>

#include <vector>

namespace tessaro {

class ViewRows;
struct GridRow;

/// The grid of the data view: its keys, its head, its scrolling, and the timer that brings page after page.
class GridTable final : public DataTable {
    Q_OBJECT

  public:
    explicit GridTable(QWidget* parent = nullptr);

    /// Shows these rows, which must outlive the grid's use. To be called once.
    void SetRows(ViewRows& rows);
    /// The columns share the width by what they can show of the selection.
    void FitColumns();
    /// Lines, colours, direction and fonts again, after a change of preferences or language.
    void ShowPreferences();

    /// Sorts by a column (1 to 8). Nothing while the grid is empty.
    void SortByColumn(int column, bool ascending);
    /// Marks the column that the rows are sorted by; 0 for none.
    void ShowSortMark(int column, bool ascending);
    /// Removes the highlighted rows from the view; RestoreRows puts them back.
    void RemoveHighlightedRows();
    /// Ends a running load where it is.
    void StopLoad();
    /// The row with the cursor; nullptr for the spare one and while there is none.
    [[nodiscard]] const GridRow* CurrentRow() const;
    /// Column with the cursor, from 1; 0 for none.
    [[nodiscard]] int CurrentColumn() const { return currentIndex().column() + 1; }

  Q_SIGNALS:
    void SeenChanged(); ///< further rows are loaded, others are in sight, or some are gone
    void Sorted(int column, bool ascending);

  protected:
    void keyPressEvent(QKeyEvent* event) override;

  private:
    [[nodiscard]] bool TakesKey(const QKeyEvent& event);
    [[nodiscard]] bool GoToEnd();
    void tmrDataView_Timer();
    void Scrolled();
    [[nodiscard]] std::vector<int> HighlightedRows() const;

    ViewRows* rows_ = nullptr;
    QTimer tmrDataView_;
    int sortedColumn_ = 0; ///< column with the sort mark; 0 for none
    bool sortedAscending_ = false;
};

} // namespace tessaro
