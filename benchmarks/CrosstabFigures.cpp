#include "Figures.h"
#include "presentation/PivotQuery.h"
#include "presentation/ValueRanges.h"
#include "session/Query.h"
#include "session/Session.h"

#include <cstdio>
#include <cstdlib>

namespace tessaro::bench {

namespace {

const std::string kCrosstab = "crosstab of a million values, 200 rows by 200 columns";
const std::string kByCount = "ranges of equal count of a million values (by hand: their sorted read)";
const std::string kBySize = "ranges of equal size of a million values (by hand: their sorted read)";

const std::string kFrom =
    " FROM sel._SelIUSNId S JOIN Data D ON D.IUSNId = S.IUSNId AND D.SourceNId = S.SourceNId JOIN "
    "sel._SelTimePeriod T ON T.TimePeriodNId = D.TimePeriodNId JOIN sel._SelArea A ON A.AreaNId "
    "= D.AreaNId";

void ReadCrosstab() {
    RowFilter = AnotherFilter();
    Records rows = Select(CrosstabStatement(), jet::CursorType::ForwardOnly);
    std::vector<QString> row(rows.isOpen() ? rows.rows().FieldCount() : 0);
    for (; !rows.atEnd(); rows.MoveNext())
        for (std::size_t field = 0; field < row.size(); ++field)
            row[field] = rows.Text(field);
    RowFilter.clear();
}

/// The columns are found out first, then each is an aggregate with a condition.
void CrosstabByHand(HandWritten& hand) {
    const std::string from =
        kFrom + " JOIN work._Subpop P ON P.SubpopGId = S.SubpopGId COLLATE NOCASE WHERE S.Deleted = 0";
    std::string sql = "SELECT A.AreaName";
    for (const std::int64_t code : hand.Numbers("SELECT DISTINCT T.TimePeriodNId * 1000 + P.SubpopNId" + from, 0))
        sql += ", max(CASE WHEN T.TimePeriodNId = " + std::to_string(code / 1000) +
               " AND P.SubpopNId = " + std::to_string(code % 1000) + " THEN D.Datavalue END)";
    hand.Walk(sql + from + " GROUP BY A.AreaName COLLATE NOCASE");
}

void MeasureCrosstab(Report& report, const BenchSession& session) {
    if (!report.Wants(kCrosstab)) return;
    SelectMillion();
    CreateDistinctIUSTables();
    const BenchSession::Copies copies = session.CopyForHand();
    HandWritten hand(session.database, copies.selections, copies.working);
    WaitForColumns();
    report.CompareOnce(
        kCrosstab, ReadCrosstab, [&] { CrosstabByHand(hand); }, 0.1);
}

void MeasureRanges(Report& report, const BenchSession& session) {
    if (!report.Wants(kByCount) && !report.Wants(kBySize)) return;
    SelectMillion();
    // The values of one indicator are cut; here it has all of them.
    if (!Execute(QStringLiteral("UPDATE _SelIUSNId SET IndicatorGId = '-I0', [Indicator] = 'One'"))) std::exit(2);
    std::vector<ColorRanges> records = InitColorRanges();
    if (records.size() != 1 || records.front().Ranges.back().Count == 0) {
        std::fprintf(stderr, "bench: the ranges can't be cut\n");
        std::exit(2);
    }
    const BenchSession::Copies copies = session.CopyForHand();
    HandWritten hand(session.database, copies.selections, copies.working);
    const std::string sorted = "SELECT CAST(D.Datavalue AS REAL)" + kFrom +
                               " WHERE S.IndicatorGId = '-I0' COLLATE NOCASE AND S.Deleted = 0 ORDER BY 1";
    const auto byHand = [&] { (void)hand.Doubles(sorted); };
    report.Compare(
        kByCount, [&] { GetEqualCountIntervals(records.front()); }, byHand, 1.5);
    report.Compare(
        kBySize, [&] { GetEqualSizeIntervals(records.front()); }, byHand, 1.5);
}

} // namespace

QString CrosstabStatement() {
    RowsColumns arrangement;
    arrangement.Place(PivotField::AreaName, Placement::Row);
    arrangement.Place(PivotField::TimePeriod, Placement::Column);
    arrangement.Place(PivotField::Subpop, Placement::Column);
    return BuildPivotSQL(arrangement, false).PivotSQL;
}

void ReadMillionAsCrosstab() {
    SelectMillion();
    CreateDistinctIUSTables();
    ReadCrosstab();
}

void MeasureCrosstabs(Report& report, const BenchSession& session) {
    MeasureCrosstab(report, session);
    MeasureRanges(report, session);
}

} // namespace tessaro::bench
