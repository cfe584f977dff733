#include "dataview/StatisticsTable.h"

#include "controls/Theme.h"
#include "dataview/StatisticsDelegate.h"
#include "dataview/ViewRows.h"
#include "session/ErrorSink.h"
#include "session/Frame.h"
#include "session/Messages.h"
#include "session/Session.h"
#include "session/StatementWatch.h"
#include "session/Strings.h"

#include <QHeaderView>
#include <QKeyEvent>

#include <algorithm>

namespace tessaro {

StatisticsTable::StatisticsTable(QWidget* parent) : DataTable(parent) {
    setObjectName(QStringLiteral("DataStats"));
    setModel(&lines_);
    setItemDelegate(new StatisticsDelegate(this));
    verticalHeader()->hide();
    setSelectionBehavior(QAbstractItemView::SelectRows);
    connect(this, &QTableView::clicked, this, [this](const QModelIndex& index) {
        if (index.column() < StatisticsModel::kNameColumn) lines_.Toggle(index.row());
    });
    connect(this, &QTableView::doubleClicked, this, [this](const QModelIndex& index) {
        if (index.column() >= StatisticsModel::kNameColumn) lines_.Toggle(index.row());
    });
}

void StatisticsTable::SetFormCaptions() {
    SetHint(GetText(QStringLiteral("TS_NoStatistics")));
    lines_.Refresh();
}

void StatisticsTable::Draw(const ViewRows& rows) {
    ErrorTrap trap("DrawStats");
    bool stopped = false;
    {
        const WaitState wait;
        const StatementWatch watch;
        TheFrame().SetProgress(20);
        unreadable_ = {};
        lines_.SetLines(ReadStatistics(RowFilter, &unreadable_));
        TheFrame().SetProgress(100);
        stopped = watch.Stopped();
        if (stopped) unreadable_ = {};
    }
    SetHint(GetText(stopped ? QStringLiteral("TS_StatisticsStopped") : QStringLiteral("TS_NoStatistics")));
    FitToFont();
    FitColumns();
    // Rows in the grid, and none of them counted: the file was damaged or taken away since.
    const bool countable =
        !stopped && rows.Grid().ValueRows() > 0 && !rows.Filters().MissingDataOn && unreadable_.count == 0;
    if (countable && lines_.rowCount() == 0)
        ShowMessage(GetText(QStringLiteral("TS_DataUnreadable")), MessageType::Ok, MessageIcon::Note, {}, false);
}

/// The marks are narrow; the figures stand whole and apart where the names leave them room.
void StatisticsTable::FitColumns() {
    constexpr int kMarks = StatisticsModel::kNameColumn;
    constexpr int kAmpleFigure = 14;
    const QFontMetrics metrics = fontMetrics();
    std::vector<Wish> wishes(kMarks, {theme::kIconSize, 1, theme::kIconSize});
    wishes.push_back({lines_.Longest(kMarks).Width(metrics), 3, 0, true});
    for (int column = kMarks + 1; column < StatisticsModel::MaxCols; ++column) {
        const int figure = lines_.Longest(column).Width(metrics);
        wishes.push_back({std::max(figure, metrics.averageCharWidth() * kAmpleFigure), 1, figure});
    }
    SetColumnWishes(std::move(wishes));
}

void StatisticsTable::keyPressEvent(QKeyEvent* event) {
    if (!TakesKey(*event)) DataTable::keyPressEvent(event);
}

// True when the key has opened or closed a row.
bool StatisticsTable::TakesKey(const QKeyEvent& event) {
    const int row = currentIndex().row();
    if (row < 0) return false;
    const bool mirrored = layoutDirection() == Qt::RightToLeft;
    const bool opens = event.key() == Qt::Key_Plus || event.key() == (mirrored ? Qt::Key_Left : Qt::Key_Right);
    const bool closes = event.key() == Qt::Key_Minus || event.key() == (mirrored ? Qt::Key_Right : Qt::Key_Left);
    if (event.key() == Qt::Key_Space || event.key() == Qt::Key_Return) {
        lines_.Toggle(row);
        return true;
    }
    if (event.modifiers() & Qt::ControlModifier || (!opens && !closes)) return false;
    if (lines_.HasChildren(row) && lines_.IsOpen(row) != opens) lines_.Toggle(row);
    return true;
}

} // namespace tessaro
