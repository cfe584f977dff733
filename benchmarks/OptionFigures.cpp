#include "Figures.h"
#include "dataview/DataPaging.h"
#include "dataview/GridQuery.h"
#include "dataview/HiddenByRecent.h"
#include "dataview/PageQuery.h"
#include "dataview/Statistics.h"
#include "session/Query.h"
#include "session/Session.h"
#include "view/DataFilters.h"
#include "view/InView.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace tessaro::bench {

namespace {

/// The statistics by hand; SQLite has no StDev, so the spread comes from sums. "NOT S.Deleted" and not "= 0", here and
/// below: the planner takes an equality for a narrow choice, and then begins the join at the wrong end.
std::string StatisticsByHand() {
    const std::string value = "CAST(D.Datavalue AS REAL)";
    const std::string figures = "count(D.Datavalue), min(" + value + "), max(" + value + "), printf('%.2f', avg(" +
                                value + ")), printf('%.2f', (sum(" + value + " * " + value + ") - sum(" + value +
                                ") * sum(" + value + ") / count(D.Datavalue)) / (count(D.Datavalue) - 1))";
    const std::string from = " FROM sel._SelIUSNId S JOIN Data D ON D.IUSNId = S.IUSNId AND D.SourceNId = S.SourceNId "
                             "JOIN sel._SelTimePeriod T ON T.TimePeriodNId = D.TimePeriodNId JOIN sel._SelArea A ON "
                             "A.AreaNId = D.AreaNId WHERE NOT S.Deleted GROUP BY S.IndicatorGId COLLATE NOCASE, "
                             "S.Indicator COLLATE NOCASE";
    return "SELECT S.IndicatorGId, S.Indicator, '--', '--', " + figures + ", '--', '--'" + from +
           " UNION SELECT S.IndicatorGId, S.Indicator, S.Unit, '--', " + figures + ", S.UnitGId, '--'" + from +
           ", S.Unit COLLATE NOCASE, S.UnitGId COLLATE NOCASE UNION SELECT S.IndicatorGId, S.Indicator, S.Unit, "
           "S.Subpop, " +
           figures + ", S.UnitGId, S.SubpopGId" + from +
           ", S.Unit COLLATE NOCASE, S.UnitGId COLLATE NOCASE, S.Subpop COLLATE NOCASE, S.SubpopGId COLLATE NOCASE "
           "ORDER BY 2";
}

/// A filter that lets everything pass, each time another one: the groups of the same statement are kept from run to
/// run.
void Statistics() {
    static int turn = 0;
    (void)ReadStatistics(QStringLiteral(" AND D.SourceNId <> %1 ").arg(-++turn));
}

void FirstPage(const QString& statement) {
    PageQuery query;
    (void)query.Open(statement);
    (void)query.GetRows(0, DataPaging::kPageSize);
}

void MostRecent() {
    (void)MakeMostRecentTables();
    SetMostRecentClause();
    FirstPage(FilteredStatement({{.MostRecentOn = true}, {}}, DefaultDataOrderBy()));
    (void)FindHiddenByRecent();
}

void MostRecentByHand(HandWritten& hand) {
    hand.Run(
        "DROP TABLE IF EXISTS work.h_MRD; CREATE TABLE work.h_MRD AS SELECT D.IUSNId, D.AreaNId, "
        "max(T.TimePeriod) AS Latest FROM sel._SelIUSNId S JOIN Data D ON D.IUSNId = S.IUSNId JOIN sel._SelArea A "
        "ON A.AreaNId = D.AreaNId JOIN sel._SelTimePeriod T ON T.TimePeriodNId = D.TimePeriodNId WHERE NOT S.Deleted"
        " GROUP BY D.IUSNId, D.AreaNId; DROP TABLE IF EXISTS work.h_MRD1; CREATE TABLE work.h_MRD1 AS SELECT "
        "M.IUSNId, M.AreaNId, M.Latest, D.RowNId FROM work.h_MRD M JOIN Data D ON D.IUSNId = M.IUSNId AND "
        "D.AreaNId = M.AreaNId JOIN TimePeriod P ON P.TimePeriodNId = D.TimePeriodNId AND P.TimePeriod = "
        "M.Latest;");
    hand.Walk("SELECT D.TimePeriodNId, D.AreaNId, D.IUSNId, D.Datavalue, D.SourceNId, D.FootnoteNId, D.RowNId FROM "
              "work.h_MRD1 M JOIN Data D ON D.RowNId = M.RowNId JOIN sel._SelArea A ON A.AreaNId = D.AreaNId JOIN "
              "sel._SelTimePeriod T ON T.TimePeriodNId = D.TimePeriodNId JOIN sel._SelIUSNId S ON S.IUSNId = D.IUSNId "
              "AND S.SourceNId = D.SourceNId ORDER BY D.AreaNId",
              DataPaging::kPageSize);
    hand.Walk("SELECT group_concat(RowNId) FROM work.h_MRD1");
}

void Missing() {
    (void)MakeMissingDataTable();
    FirstPage(FilteredStatement({{.MissingDataOn = true}, {}}, DefaultDataOrderBy()));
}

void MissingByHand(HandWritten& hand) {
    hand.Run("DROP TABLE IF EXISTS work.h_Cells; CREATE TABLE work.h_Cells AS SELECT DISTINCT S.IUSNId, A.AreaNId, "
             "T.TimePeriodNId, S.SourceNId FROM sel._SelIUSNId S, sel._SelArea A, sel._SelTimePeriod T;");
    hand.Walk("SELECT C.TimePeriodNId, C.AreaNId, C.IUSNId, D.Datavalue, C.SourceNId, D.FootnoteNId, D.RowNId FROM "
              "work.h_Cells C JOIN sel._SelIUSNId S ON S.IUSNId = C.IUSNId AND S.SourceNId = C.SourceNId JOIN "
              "sel._SelArea A ON A.AreaNId = C.AreaNId JOIN sel._SelTimePeriod T ON T.TimePeriodNId = C.TimePeriodNId "
              "LEFT JOIN Data D ON D.IUSNId = C.IUSNId AND D.AreaNId = C.AreaNId AND D.TimePeriodNId = "
              "C.TimePeriodNId AND D.SourceNId = C.SourceNId ORDER BY C.AreaNId",
              DataPaging::kPageSize);
}

constexpr auto kRangeByHand =
    "SELECT D.TimePeriodNId, D.AreaNId, D.IUSNId, D.Datavalue, D.SourceNId, D.FootnoteNId, D.RowNId FROM sel._SelArea "
    "A CROSS JOIN Data D ON D.AreaNId = A.AreaNId JOIN sel._SelTimePeriod T ON T.TimePeriodNId = D.TimePeriodNId JOIN "
    "sel._SelIUSNId S ON S.IUSNId = D.IUSNId AND S.SourceNId = D.SourceNId WHERE NOT S.Deleted AND CAST(D.Datavalue AS "
    "REAL) >= 10 AND CAST(D.Datavalue AS REAL) <= 11 ORDER BY A.AreaNId";

void MeasureValueRange(Report& report, HandWritten& hand) {
    const DataFilters range{.ValueRangeOn = true, .DataValueFrom = 10, .DataValueTo = 11};
    report.Compare(
        "value range to the first page",
        [&] {
            FirstPage(FilteredStatement({range, {}}, DefaultDataOrderBy()));
        },
        [&] { hand.Walk(kRangeByHand, DataPaging::kPageSize); });
}

/// A source is taken out of the view and put back, each time to the first page.
void MeasureTakeOut(Report& report) {
    const std::string what = "a source taken out and put back, each to the first page";
    const auto once = [] {
        const QString source =
            Select(QStringLiteral("SELECT TOP 1 SourceNId FROM _SelIUSNId ORDER BY SourceNId")).Text(std::size_t{0});
        const QString rows =
            Select(QStringLiteral("SELECT RowNId FROM _SelIUSNId WHERE SourceNId = ") + source).Joined();
        double slowest = 0;
        for (const char* deleted : {"True", "False"})
            slowest = std::max(slowest, Milliseconds([&] {
                                   Execute(QStringLiteral("UPDATE _SelIUSNId IUS SET IUS.[Deleted] = ") +
                                           QLatin1String(deleted) + QStringLiteral("  WHERE IUS.RowNId in(") + rows +
                                           QLatin1Char(')'));
                                   FirstPage(RequeryStatement({}, DefaultDataOrderBy()));
                               }));
        return slowest;
    };
    report.Bound(what, once, report.OfAllValues(500), "ms");
}

/// A click on a column's head, in a view of so many rows that SQL must sort them.
void MeasureOrders(Report& report) {
    const std::pair<int, const char*> columns[] = {
        {ColTimePeriod, "period"}, {ColIndicator, "indicator"}, {ColDatavalue, "value"}};
    for (const auto& [column, name] : columns) {
        const QString statement = RequeryStatement({}, DataOrderByColumn(column, false));
        const auto once = [&statement] { return Milliseconds([&statement] { FirstPage(statement); }); };
        report.Bound(std::string("sorted by ") + name + ", to the first page", once, report.OfAllValues(500), "ms");
    }
}

} // namespace

void MeasureDataOptions(Report& report, const BenchSession& session) {
    SelectEverything();
    MeasureTakeOut(report);
    {
        const BenchSession::Copies copies = session.CopyForHand();
        HandWritten hand(session.database, copies.selections, copies.working);
        MeasureValueRange(report, hand);
        WaitForColumns();
        const std::string byHand = StatisticsByHand();
        report.CompareOnce(
            "statistics over everything", Statistics, [&] { hand.Walk(byHand); }, 0.02, report.OfAllValues(500));
        report.CompareOnce(
            "most recent data to the first page", MostRecent, [&] { MostRecentByHand(hand); }, 0.07,
            report.OfAllValues(500));
        MeasureOrders(report);
    }
    SelectHalf();
    const BenchSession::Copies copies = session.CopyForHand();
    HandWritten hand(session.database, copies.selections, copies.working);
    report.Compare("missing data of half of everything to the first page", Missing, [&] { MissingByHand(hand); });
}

} // namespace tessaro::bench
