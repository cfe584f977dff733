#include "Figures.h"
#include "controls/DataTable.h"
#include "dataview/DataPaging.h"
#include "dataview/GridQuery.h"
#include "dataview/frmData.h"
#include "session/Query.h"
#include "session/Session.h"
#include "view/InView.h"

#include <QApplication>

#include <algorithm>
#include <vector>

namespace tessaro::bench {

namespace {

constexpr auto kByHand =
    "SELECT D.TimePeriodNId, D.AreaNId, D.IUSNId, D.Datavalue, D.SourceNId, D.FootnoteNId, D.RowNId FROM sel._SelArea "
    "A CROSS "
    "JOIN Data D ON D.AreaNId = A.AreaNId JOIN sel._SelTimePeriod T ON T.TimePeriodNId = D.TimePeriodNId JOIN "
    "sel._SelIUSNId S ON S.IUSNId = D.IUSNId AND S.SourceNId = D.SourceNId ORDER BY A.AreaID COLLATE NOCASE";

const std::string kPage = "a page of 50 rows, built and put into the grid";
const std::string kSlowPage = "the same, slowest of 20 pages";
const std::string kSort = "sort of some 50,000 rows in the grid";

void MeasureStatement(Report& report, HandWritten& hand) {
    report.Compare(
        "grid statement to its first page",
        [] {
            PageQuery query;
            (void)query.Open(IdentifierStatement());
            (void)query.GetRows(0, DataPaging::kPageSize);
        },
        [&] { hand.Walk(kByHand, DataPaging::kPageSize); });
    report.Compare(
        "grid statement to its end",
        [] {
            PageQuery query;
            (void)query.Open(IdentifierStatement());
            (void)query.RecordCount();
        },
        [&] { (void)hand.Numbers(kByHand, 6); });
}

double SlowestFirstPage() {
    double slowest = 0;
    for (int round = 0; round < 5; ++round) {
        frmData form;
        form.resize(1280, 600);
        form.show();
        QApplication::processEvents();
        SelectionChanged = true;
        slowest = std::max(slowest, Milliseconds([&] {
                               form.Enter();
                               form.repaint();
                               QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
                           }));
    }
    return slowest;
}

void MeasurePages(Report& report) {
    if (!report.Wants(kPage) && !report.Wants(kSlowPage)) return;
    GridModel grid;
    DataTable view;
    view.setModel(&grid);
    view.resize(1280, 600);
    view.show();
    DataPaging paging(grid);
    (void)paging.StartPaging(IdentifierStatement());
    std::vector<double> pages;
    for (int page = 0; page < 400; ++page)
        pages.push_back(Milliseconds([&] { paging.PageTick(); }));
    std::ranges::sort(pages);
    report.Bound(kPage, pages[pages.size() / 2], 5, "ms");
    report.Bound(kSlowPage, pages[pages.size() * 19 / 20], 5, "ms");
}

void MeasureSort(Report& report) {
    if (!report.Wants(kSort)) return;
    Execute(QStringLiteral("DELETE * FROM _SelArea WHERE AreaNId > 2")); // 2 areas: some 50,000 rows
    GridModel grid;
    DataPaging paging(grid);
    if (!paging.StartPaging(IdentifierStatement())) return;
    while (!paging.PagingComplete() && grid.MaxRows() < GridModel::kInGridSortLimit - 1)
        paging.PageTick();
    paging.EndPaging(true);
    report.Bound(kSort, Milliseconds([&] { grid.SortInGrid(ColIndicator, false); }), 500, "ms");
}

} // namespace

void MeasureGrid(Report& report, const BenchSession& session) {
    const BenchSession::Copies copies = session.CopyForHand();
    HandWritten hand(session.database, copies.selections, copies.working);
    MeasureStatement(report, hand);
    report.Bound("first page in the grid after the Data button", SlowestFirstPage, 100, "ms");
    MeasurePages(report);
    MeasureSort(report);
}

} // namespace tessaro::bench
