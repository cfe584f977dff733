#include "Figures.h"
#include "dataview/DataPaging.h"
#include "dataview/GridQuery.h"
#include "dataview/PageQuery.h"
#include "session/Query.h"
#include "session/Session.h"

namespace tessaro::bench {

namespace {

const QString kStatisticsFrom = QStringLiteral(
    " FROM _SelIUSNId AS IUS INNER JOIN ((_SelTimePeriod AS T INNER JOIN Data AS D ON T.TimePeriodNId = "
    "D.TimePeriodNId) INNER JOIN _SelArea AS A ON D.AreaNId = A.AreaNId) ON (IUS.SourceNId = D.SourceNId) AND "
    "(IUS.IUSNId = D.IUSNId) WHERE IUS.Deleted = False ");

const QString kFigures = QStringLiteral(
    "Count(D.Datavalue) AS CountOfDatavalue, Min(D.Datavalue) AS MinOfDatavalue, Max(D.Datavalue) AS MaxOfDatavalue, "
    "format(Avg(D.Datavalue),'#.00') AS AvgOfDatavalue, format(StDev(D.Datavalue),'#.00') AS StDevOfDatavalue, ");

QString StatisticsStatement() {
    return QStringLiteral(" SELECT IUS.IndicatorGId, IUS.[Indicator], '--' as Unit, '--' as Subpop, ") + kFigures +
           QStringLiteral("'--' as UnitGId, '--' as SubpopGId ") + kStatisticsFrom +
           QStringLiteral(" GROUP BY IUS.IndicatorGId, IUS.[Indicator]  UNION  SELECT IUS.IndicatorGId, "
                          "IUS.[Indicator], IUS.Unit, '--' as Subpop, ") +
           kFigures + QStringLiteral("IUS.UnitGId, '--' as SubpopGId ") + kStatisticsFrom +
           QStringLiteral(" GROUP BY IUS.IndicatorGId, IUS.[Indicator], IUS.Unit, IUS.UnitGId  UNION  SELECT "
                          "IUS.IndicatorGId, IUS.[Indicator], IUS.Unit, IUS.Subpop, ") +
           kFigures + QStringLiteral("IUS.UnitGId, IUS.SubpopGId ") + kStatisticsFrom +
           QStringLiteral(" GROUP BY IUS.IndicatorGId, IUS.[Indicator], IUS.Unit, IUS.Subpop, IUS.UnitGId, "
                          "IUS.SubpopGId   ORDER BY IUS.[Indicator]");
}

/// The same by hand; SQLite has no StDev, so the spread comes from sums. "NOT S.Deleted" and not "= 0", here and below:
/// the planner takes an equality for a narrow choice, and then begins the join at the wrong end.
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

void FirstPage(const QString& statement) {
    PageQuery query;
    (void)query.Open(statement);
    (void)query.GetRows(0, DataPaging::kPageSize);
}

void MostRecent() {
    Execute(QStringLiteral("DROP TABLE [_DataMRD]"));
    Execute(QStringLiteral(
        "SELECT D.IUSNId, D.AreaNId, Max(T.TimePeriod) AS MaxOfTimePeriod INTO [_DataMRD]  FROM _SelTimePeriod AS T "
        "INNER JOIN (_SelArea AS A INNER JOIN (_SelIUSNId AS IUS INNER JOIN  Data AS D ON IUS.IUSNId = D.IUSNId) ON "
        "A.AreaNId = D.AreaNId) ON T.TimePeriodNId = D.TimePeriodNId  GROUP BY D.IUSNId, D.AreaNId, IUS.Deleted HAVING "
        "IUS.Deleted=False"));
    Execute(QStringLiteral("DROP TABLE [_DataMRD1]"));
    Execute(QStringLiteral(
        "SELECT [_DataMRD].IUSNId, [_DataMRD].AreaNId, [_DataMRD].MaxOfTimePeriod, CStr(Data.RowNId) AS MAXRowNId INTO "
        "_DataMRD1  FROM (_DataMRD INNER JOIN Data ON ([_DataMRD].IUSNId = Data.IUSNId) AND ([_DataMRD].AreaNId =  "
        "Data.AreaNId)) INNER JOIN TimePeriod ON ([_DataMRD].MaxOfTimePeriod = TimePeriod.TimePeriod)  AND "
        "(Data.TimePeriodNId = TimePeriod.TimePeriodNId)"));
    FirstPage(QStringLiteral(
                  "SELECT DISTINCTROW D.TimePeriodNId, D.AreaNId, D.IUSNId, D.Datavalue, D.SourceNId, D.FootnoteNId, "
                  "D.RowNId  FROM _SelIUSNId AS IUS INNER JOIN ((_SelArea AS A INNER JOIN _DataMRD1 AS DT ON A.AreaNId "
                  "= DT.AreaNId)  INNER JOIN (_SelTimePeriod AS T INNER JOIN Data AS D ON T.TimePeriodNId =  "
                  "D.TimePeriodNId) ON (DT.MaxOfTimePeriod = T.TimePeriod) AND (DT.IUSNId = D.IUSNId)  AND "
                  "(DT.AreaNId = D.AreaNId)) ON (IUS.SourceNId = D.SourceNId) AND (IUS.IUSNId = DT.IUSNId)") +
              DefaultDataOrderBy());
    (void)Select(QStringLiteral("SELECT MAXRowNId FROM [_DataMRD1]"), jet::CursorType::ForwardOnly).Joined();
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
    Execute(QStringLiteral("DROP TABLE _DataTemp1"));
    Execute(QStringLiteral("SELECT DISTINCT IUSNId, AreaNID, TimePeriodNId, SourceNId INTO _DataTemp1 FROM _SelIUSNId, "
                           "_SelArea, _SelTimePeriod"));
    FirstPage(QStringLiteral(
                  "SELECT Dt.TimePeriodNId, Dt.AreaNID, Dt.IUSNId, D.Datavalue, Dt.SourceNId, D.FootnoteNId, D.RowNId  "
                  "FROM Data AS D RIGHT JOIN (_SelIUSNId AS IUS INNER JOIN (_SelArea AS A INNER JOIN (_SelTimePeriod  "
                  "AS T INNER JOIN _DataTemp1 AS Dt ON T.TimePeriodNId = Dt.TimePeriodNId) ON A.AreaNId = Dt.AreaNID)  "
                  "ON (IUS.IUSNId = Dt.IUSNId) AND (IUS.SourceNId = Dt.SourceNId)) ON (D.IUSNId = Dt.IUSNId) AND  "
                  "(D.SourceNId = Dt.SourceNId) AND (D.AreaNId = Dt.AreaNID) AND (D.TimePeriodNId = "
                  "Dt.TimePeriodNId)") +
              DefaultDataOrderBy());
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
    const QString statement = RequeryStatement(
        QStringLiteral(" AND (Cdbl(D.Datavalue) >= 10 AND Cdbl(D.Datavalue) <= 11)"), DefaultDataOrderBy());
    report.Compare(
        "value range to the first page", [&] { FirstPage(statement); },
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
    report.Bound(what, once, 500, "ms");
}

} // namespace

void MeasureDataOptions(Report& report, const BenchSession& session) {
    SelectEverything();
    MeasureTakeOut(report);
    {
        const BenchSession::Copies copies = session.CopyForHand();
        HandWritten hand(session.database, copies.selections, copies.working);
        MeasureValueRange(report, hand);
        const std::string byHand = StatisticsByHand();
        report.Compare(
            "statistics over everything",
            [] { (void)Select(StatisticsStatement(), jet::CursorType::ForwardOnly).Joined(); },
            [&] { hand.Walk(byHand); });
        report.Compare("most recent data to the first page", MostRecent, [&] { MostRecentByHand(hand); });
    }
    SelectHalf();
    const BenchSession::Copies copies = session.CopyForHand();
    HandWritten hand(session.database, copies.selections, copies.working);
    report.Compare("missing data of half of everything to the first page", Missing, [&] { MissingByHand(hand); });
}

} // namespace tessaro::bench
