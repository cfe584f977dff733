#include "dataview/GridTable.h"

#include "controls/SharedWidths.h"
#include "dataview/BusyText.h"
#include "dataview/GridDelegate.h"
#include "dataview/GridQuery.h"
#include "dataview/ViewRows.h"
#include "session/ErrorSink.h"
#include "session/Session.h"
#include "session/Strings.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QScrollBar>

#include <algorithm>
#include <array>

namespace tessaro {

namespace {

/// How much a visible column counts when not all of them find room. Periods, identifiers and values are never cut.
constexpr std::array<double, VisibleCols> kColumnWeights = {100, 100, 1, 1.8, 100, 1, 0.8, 1.4};
/// A value of ordinary size, with the room of its footnote mark.
const QString kWideValue = QStringLiteral("-00,000,000.000");

} // namespace

GridTable::GridTable(QWidget* parent) : DataTable(parent) {
    setItemDelegate(new GridDelegate(this));
    setContextMenuPolicy(Qt::CustomContextMenu);
    tmrDataView_.setInterval(DataPaging::kInterval);
    connect(&tmrDataView_, &QTimer::timeout, this, &GridTable::tmrDataView_Timer);
}

void GridTable::SetRows(ViewRows& rows) {
    rows_ = &rows;
    setModel(&rows.Grid());
    for (int column = 0; column < MaxCols; ++column)
        setColumnHidden(column, column >= VisibleCols);
    rows.Paging().onTimer = [this](bool on) { on ? tmrDataView_.start() : tmrDataView_.stop(); };
    connect(&rows, &ViewRows::Cleared, this, &GridTable::scrollToTop);
    connect(horizontalHeader(), &QHeaderView::sectionClicked, this, [this](int section) {
        const int column = section + 1;
        SortByColumn(column, column != sortedColumn_ || !sortedAscending_);
    });
    QScrollBar* bar = verticalScrollBar();
    connect(bar, &QScrollBar::sliderPressed, this, [this] { rows_->Paging().PauseTimer(); });
    connect(bar, &QScrollBar::sliderReleased, this, [this] { rows_->Paging().ResumeTimer(); });
    connect(bar, &QScrollBar::valueChanged, this, &GridTable::Scrolled);
}

void GridTable::FitColumns() {
    std::vector<Wish> wishes;
    for (int column = 1; column <= VisibleCols; ++column) {
        LongestTexts texts;
        const QStringList found = column == ColDatavalue ? QStringList(kWideValue) : LongestTextsOf(column);
        for (const QString& text : found)
            texts.Take(text);
        wishes.push_back({texts.Width(fontMetrics()), kColumnWeights.at(wishes.size())});
    }
    SetColumnWishes(std::move(wishes));
}

void GridTable::ShowPreferences() {
    setShowGrid(ViewGridLines);
    setAlternatingRowColors(!ViewGridLines);
    setLayoutDirection(RightToLeft || LanguageIsRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
    FitToFont();
    rows_->Grid().Refresh();
}

void GridTable::ShowSortMark(int column, bool ascending) {
    sortedColumn_ = column;
    sortedAscending_ = ascending;
    horizontalHeader()->setSortIndicator(column - 1, ascending ? Qt::AscendingOrder : Qt::DescendingOrder);
}

void GridTable::SortByColumn(int column, bool ascending) {
    ErrorTrap trap("DataGrid_HeadClick");
    if (column < 1 || column > VisibleCols || rows_->Grid().MaxRows() == 0) return;
    clearSelection();
    rows_->SortByColumn(column, ascending);
    ShowSortMark(column, ascending);
    scrollToTop();
    Q_EMIT Sorted(column, ascending);
}

void GridTable::StopLoad() {
    rows_->Paging().Stop();
    Q_EMIT SeenChanged();
}

const GridRow* GridTable::CurrentRow() const {
    return rows_->Grid().RowAt(currentIndex().row());
}

void GridTable::tmrDataView_Timer() {
    rows_->Paging().PageTick();
    Q_EMIT SeenChanged();
}

// Whoever scrolls to the end of what is loaded gets the next page at once instead of waiting for the timer.
void GridTable::Scrolled() {
    const bool atSpareRow = rows_->Grid().HasSpareRow() && LastVisibleRow() >= rows_->Grid().ValueRows();
    DataPaging& paging = rows_->Paging();
    if (atSpareRow && paging.LoadingFromTop() && !paging.BottomStarted())
        paging.isRunning() ? paging.PageTick() : paging.NextPage();
    Q_EMIT SeenChanged();
}

void GridTable::keyPressEvent(QKeyEvent* event) {
    if (!TakesKey(*event)) DataTable::keyPressEvent(event);
}

// True when the key is done with; otherwise the grid moves its cursor as ever.
bool GridTable::TakesKey(const QKeyEvent& event) {
    if (event.key() == Qt::Key_Delete && event.modifiers() == Qt::NoModifier) {
        RemoveHighlightedRows();
        return true;
    }
    if (event.key() == Qt::Key_Escape && rows_->Paging().isRunning()) {
        StopLoad();
        return true;
    }
    if ((event.modifiers() & Qt::ControlModifier) == 0) return false;
    if (event.key() == Qt::Key_Home) rows_->Paging().LoadFromStart();
    return event.key() == Qt::Key_End && GoToEnd();
}

// True when the cursor stands on the last row: the last one with values while a spare one stands behind it.
bool GridTable::GoToEnd() {
    const WaitPointer wait;
    if (rows_->Paging().LoadFromEnd()) rows_->Paging().PageTick();
    Q_EMIT SeenChanged();
    const int last = rows_->Grid().ValueRows() - 1;
    if (!rows_->Grid().HasSpareRow() || last < 0) return false;
    const QModelIndex cell = model()->index(last, std::max(currentIndex().column(), 0));
    setCurrentIndex(cell);
    scrollTo(cell, QAbstractItemView::PositionAtBottom);
    return true;
}

std::vector<int> GridTable::HighlightedRows() const {
    std::vector<int> rows;
    const QItemSelection chosen = selectionModel()->selection();
    for (const QItemSelectionRange& range : chosen) {
        const int last = std::min(range.bottom(), rows_->Grid().ValueRows() - 1);
        for (int row = range.top(); row <= last; ++row)
            rows.push_back(row);
    }
    std::ranges::sort(rows, std::greater());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    return rows;
}

void GridTable::RemoveHighlightedRows() {
    ErrorTrap trap("RemoveRowFromDataGrid");
    const std::vector<int> rows = HighlightedRows();
    if (rows.empty()) return;
    const BusyText busy;
    const int column = std::max(currentIndex().column(), 0);
    clearSelection();
    setUpdatesEnabled(false);
    rows_->RemoveRows(rows);
    setUpdatesEnabled(true);
    const int next = std::min(rows.back(), rows_->Grid().ValueRows() - 1);
    if (next >= 0) setCurrentIndex(model()->index(next, column));
    Q_EMIT SeenChanged();
}

} // namespace tessaro
