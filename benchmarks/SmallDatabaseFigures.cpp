#include "Figures.h"
#include "database/Database.h"
#include "dataview/DataPaging.h"
#include "dataview/GridQuery.h"
#include "dataview/Statistics.h"
#include "jet/engine/Connection.h"
#include "platform/Paths.h"
#include "presentation/PivotQuery.h"
#include "session/ColumnCache.h"
#include "session/DatabasePassword.h"
#include "session/Session.h"
#include "view/InView.h"

#include <algorithm>
#include <filesystem>
#include <limits>

namespace tessaro::bench {

namespace {

constexpr int kFewerValues = 190'000; ///< of which no image is made

/// The installation's own database with fewer values, for which images are not made.
QString MakeSmall(const QString& sample, const QString& folder) {
    const QString small = folder + QStringLiteral("/small.mdb");
    jet::Database::Copy(sample.toStdString(), small.toStdString());
    const auto connection = jet::Connection::Open(small.toStdString(), DatabasePassword());
    connection->Execute("DELETE FROM Data WHERE RowNId > " + std::to_string(kFewerValues));
    connection->Close();
    HandWritten(small.toStdString(), ":memory:", ":memory:").Run("ANALYZE main"); // tells how many rows there are
    return small;
}

/// What is asked of the small database, each time by another text, so that it is translated anew.
struct Work {
    const char* name;
    QString (*statement)();
    int rows = std::numeric_limits<int>::max(); ///< are read
};

QString Crosstab() {
    RowFilter = AnotherFilter();
    const QString statement = CrosstabStatement();
    RowFilter.clear();
    return statement;
}

const Work kWorks[] = {
    {"first page of the data view", [] { return RequeryStatement(AnotherFilter(), DefaultDataOrderBy()); },
     DataPaging::kPageSize},
    {"few rows of one area",
     [] { return RequeryStatement(AnotherFilter() + QStringLiteral(" AND D.AreaNId = 7"), {}); },
     DataPaging::kPageSize},
    {"statistics", [] { return StatisticsStatement(AnotherFilter()); }},
    {"values above a bound, counted",
     [] {
         return QStringLiteral("SELECT Count(*) AS Numbers") +
                InView(joins::kGrid, AnotherFilter() + QStringLiteral(" AND D.Datavalue >= 7"));
     }},
    {"cells without a value, counted",
     [] {
         return QStringLiteral("SELECT Count(*) AS Numbers") + InView(joins::kGrid, AnotherFilter()) +
                QStringLiteral(" GROUP BY D.IUSNId, D.SourceNId, D.AreaNId, D.TimePeriodNId HAVING Count(*) > 1");
     }},
    {"crosstab", Crosstab}};

std::string NameOf(const Work& work) {
    return std::string("small database, with column images against without: ") + work.name;
}

void ReadRows(jet::Connection& connection, const QString& sql, int most) {
    auto rows = connection.OpenRecordset(sql.toStdString(), jet::CursorType::ForwardOnly);
    for (int n = 0; n < most && !rows.atEnd(); ++n)
        rows.MoveNext();
}

/// What a statement costs with the column images' step, in percent of what it costs without it, in processor time. Both
/// translate it anew each time.
double PercentOfPlain(const Work& work, const std::string& working) {
    constexpr int kFewestRounds = 4;
    constexpr int kMostRounds = 200;
    constexpr double kLongest = 4000; // milliseconds in all, after which the fewest rounds are enough
    constexpr double kLongEnough = 8; // milliseconds
    const auto open = [&] { return jet::Connection::Open(working, DatabasePassword(), jet::Use::Working); };
    const auto with = open();
    const auto without = open();
    UseColumnCache(*with);
    without->LeaveOutStep("column-scans");
    const auto cost = [&](jet::Connection& connection, int times) {
        const double begun = ProcessorMilliseconds();
        for (int i = 0; i < times; ++i)
            ReadRows(connection, work.statement(), work.rows);
        return (ProcessorMilliseconds() - begun) / times;
    };
    cost(*with, 1);
    const int times = std::max(1, static_cast<int>(kLongEnough / std::max(cost(*without, 1), 0.1)));
    double best = std::numeric_limits<double>::infinity();
    double bestWithout = best;
    const double begun = ProcessorMilliseconds();
    const auto isEnough = [&](int rounds) {
        return rounds == kMostRounds || (rounds >= kFewestRounds && ProcessorMilliseconds() - begun > kLongest);
    };
    for (int round = 0; !isEnough(round); ++round) {
        const bool first = round % 2 == 0;
        if (first) best = std::min(best, cost(*with, times));
        bestWithout = std::min(bestWithout, cost(*without, times));
        if (!first) best = std::min(best, cost(*with, times));
    }
    return 100 * best / bestWithout;
}

} // namespace

void MeasureSmallDatabase(Report& report, const QString& installation) {
    if (!std::ranges::any_of(kWorks, [&](const Work& work) { return report.Wants(NameOf(work)); })) return;
    const QString sample = FindPath(installation + QStringLiteral("/Data/Tessaro World.mdb"));
    const QString working = FindPath(JoinPath({CacheFolder, QStringLiteral("InfoSel.mdb")}));
    const QString small = MakeSmall(sample, FindPath(CacheFolder));
    if (OpenDatabaseFile(small)) {
        SelectEverything();
        CreateDistinctIUSTables();
        for (const Work& work : kWorks)
            report.Bound(
                NameOf(work), [&] { return PercentOfPlain(work, working.toStdString()); }, 105, "%");
    }
    Connection.reset();
    std::filesystem::remove(small.toStdString());
}

} // namespace tessaro::bench
