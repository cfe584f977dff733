#include "Figures.h"
#include "dataview/FilterCounter.h"
#include "jet/engine/ColumnImages.h"
#include "jet/engine/Connection.h"
#include "presentation/RowsColumns.h"
#include "presentation/ValueRanges.h"
#include "session/ColumnCache.h"
#include "session/DatabasePassword.h"
#include "session/Query.h"
#include "session/Session.h"
#include "view/InView.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <thread>

namespace tessaro::bench {

namespace {

/// Makes the column image of the values in an empty folder; gives the bytes on disk.
std::uintmax_t MakeImage(const std::string& database, const std::string& folder) {
    std::filesystem::remove_all(folder);
    jet::ColumnImages::Settings settings;
    settings.folder = folder;
    const auto images = std::make_shared<jet::ColumnImages>(std::move(settings));
    const auto connection = jet::Connection::Open(database, DatabasePassword());
    connection->UseColumnImages(images);
    static_cast<void>(connection->Explain("SELECT IUSNId, Count(*) AS Numbers FROM Data GROUP BY IUSNId"));
    images->Wait();
    std::uintmax_t bytes = 0;
    for (const auto& file : std::filesystem::directory_iterator(folder))
        bytes += file.file_size();
    return bytes;
}

constexpr auto kReadByHand = "SELECT RowNId, TimePeriodNId, IUSNId, AreaNId, SourceNId, FootnoteNId, Datavalue FROM "
                             "Data NOT INDEXED";

const std::string kFrom =
    " FROM sel._SelIUSNId S JOIN Data D ON D.IUSNId = S.IUSNId AND D.SourceNId = S.SourceNId JOIN sel._SelTimePeriod T "
    "ON T.TimePeriodNId = D.TimePeriodNId JOIN sel._SelArea A ON A.AreaNId = D.AreaNId WHERE NOT S.Deleted ";

/// Each answer is another one, so that none is kept from before.
double MillisecondsOfCount(bool missing) {
    static int turn = 0;
    FilterCounter counter;
    counter.Start();
    double slowest = 0;
    for (int i = 0; i < 5; ++i) {
        const DataFilters filters{.MissingDataOn = missing,
                                  .ValueRangeOn = !missing || i > 0,
                                  .DataValueFrom = 10.0 + ++turn,
                                  .DataValueTo = 400};
        slowest = std::max(slowest, Milliseconds([&] { (void)counter.RowsLeft(filters); }));
    }
    return slowest;
}

void AskSevenByHand(HandWritten& hand) {
    for (const std::string field :
         {"T.TimePeriod", "A.AreaID", "A.AreaName", "S.Indicator", "S.Subpop", "S.Unit", "S.Source"})
        hand.Walk("SELECT 1" + kFrom +
                      "GROUP BY T.TimePeriod, S.Indicator COLLATE NOCASE, A.AreaName COLLATE NOCASE HAVING count(" +
                      field + ") > 1 AND min(" + field + ") <> max(" + field + ")",
                  1);
}

/// Another filter each time, which lets everything pass: the last groups are kept from run to run.
void ReadAll(const QString& head, const QString& tail = {}) {
    RowFilter = AnotherFilter();
    Records rows = Select(head + InView(joins::kValueRanges) + tail, jet::CursorType::ForwardOnly);
    while (!rows.atEnd())
        rows.MoveNext();
    RowFilter.clear();
}

void ReadLimits() {
    ReadAll(QStringLiteral("SELECT IUS.[Indicator],IUS.IndicatorGId, Min(D.Datavalue) AS MinOfDatavalue, "
                           "Max(D.Datavalue) AS MaxOfDatavalue  "),
            QStringLiteral(" GROUP BY IUS.[Indicator],IUS.IndicatorGId "));
}

void ReadDifferent() {
    ReadAll(QStringLiteral("SELECT DISTINCT D.Datavalue "));
}

/// The same of a million values, of which the answer by hand takes long enough.
void MeasureShared(Report& report, const BenchSession& session) {
    const std::string seven = "do shared cells of a million values differ, for seven fields";
    const std::string different = "the different ones of a million values";
    if (!report.Wants(seven) && !report.Wants(different)) return;
    SelectMillion();
    WaitForColumns();
    const BenchSession::Copies copies = session.CopyForHand();
    HandWritten hand(session.database, copies.selections, copies.working);
    report.CompareOnce(
        seven, AskSeven, [&] { AskSevenByHand(hand); }, 0.05);
    report.CompareOnce(
        different, ReadDifferent, [&] { hand.Walk("SELECT DISTINCT CAST(D.Datavalue AS REAL)" + kFrom); }, 0.3);
    SelectEverything();
}

void MeasureQuestions(Report& report, const BenchSession& session) {
    const std::string count = "rows left by a value range, counted";
    const std::string missing = "cells without a value, counted";
    const std::string limits = "least and greatest value of each indicator";
    if (!report.Wants(count) && !report.Wants(missing) && !report.Wants(limits)) return;
    WaitForColumns();
    const BenchSession::Copies copies = session.CopyForHand();
    HandWritten hand(session.database, copies.selections, copies.working);
    report.Bound(
        count, [] { return MillisecondsOfCount(false); }, report.OfAllValues(200), "ms");
    report.Bound(
        missing, [] { return MillisecondsOfCount(true); }, report.OfAllValues(200), "ms");
    report.CompareOnce(
        limits, ReadLimits,
        [&] {
            hand.Walk("SELECT S.Indicator, S.IndicatorGId, min(CAST(D.Datavalue AS REAL)), max(CAST(D.Datavalue AS "
                      "REAL))" +
                      kFrom + "GROUP BY S.Indicator COLLATE NOCASE, S.IndicatorGId COLLATE NOCASE");
        },
        0.05);
}

} // namespace

QString AnotherFilter() {
    static int turn = 1'000'000;
    return QStringLiteral(" AND D.SourceNId <> %1 ").arg(++turn);
}

void AskSeven() {
    RowsColumns arrangement;
    arrangement.Place(PivotField::AreaName, Placement::Row);
    arrangement.Place(PivotField::Indicator, Placement::Row);
    arrangement.Place(PivotField::TimePeriod, Placement::Column);
    RowFilter = AnotherFilter();
    for (int field = 0; field < kPivotFieldCount; ++field)
        (void)MultipleExists(static_cast<PivotField>(field), arrangement);
    RowFilter.clear();
}

void WaitForColumns() {
    const QString statement = QStringLiteral("SELECT IUSNId, Count(*) AS Numbers FROM Data GROUP BY IUSNId");
    constexpr int kMostTenths = 3000;
    for (int tenths = 0; tenths < kMostTenths; ++tenths) {
        if (RunsOnColumns(statement)) return;
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
    }
    std::fprintf(stderr, "bench: there is no column image\n");
    std::exit(2);
}

void MeasureColumns(Report& report, const BenchSession& session) {
    const std::string folder = session.working + ".columns";
    {
        const BenchSession::Copies copies = session.CopyForHand();
        HandWritten hand(session.database, copies.selections, copies.working);
        report.Compare(
            "column image of the values made", [&] { MakeImage(session.database, folder); },
            [&] { hand.Walk(kReadByHand); }, 1.5);
    }
    report.Bound(
        "column image on disk", [&] { return static_cast<double>(MakeImage(session.database, folder)) / 1e6; },
        report.OfAllValues(120), "MB");
    std::filesystem::remove_all(folder);
    MeasureQuestions(report, session);
    MeasureShared(report, session);
}

} // namespace tessaro::bench
