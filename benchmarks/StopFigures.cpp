#include "Figures.h"
#include "Play.h"
#include "dataview/Statistics.h"
#include "jet/engine/Connection.h"
#include "session/DatabasePassword.h"
#include "session/Session.h"
#include "view/DataFilters.h"
#include "view/InView.h"

#include <algorithm>
#include <chrono>
#include <ctime>
#include <functional>
#include <limits>
#include <optional>

namespace tessaro::bench {

namespace {

constexpr double kAtMost = 50; ///< milliseconds

/// What the processor has worked on this thread, which the user waits for, in milliseconds.
double OwnMilliseconds() {
    timespec now{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1000 + static_cast<double>(now.tv_nsec) / 1e6;
}

/// What a watch sees of a piece of work, in such milliseconds.
struct Watched {
    int questions = 0;
    double longestSilence = 0; ///< from one question to the next, from the beginning, and to the end
    double afterNo = 0;        ///< from the no to the end of the statement
};

/// `no`: the number of the question that is answered so; none is when there are fewer. A stopped statement must fail,
/// and the work end with it.
Watched Watch(jet::Connection& connection, const std::function<void()>& work, int no) {
    Watched seen;
    double last = OwnMilliseconds();
    std::optional<double> stopped;
    connection.Watch(
        [&](std::optional<int>) {
            seen.longestSilence = std::max(seen.longestSilence, OwnMilliseconds() - last);
            last = OwnMilliseconds();
            if (++seen.questions < no) return true;
            if (!stopped) stopped = last;
            return false;
        },
        std::chrono::milliseconds(0));
    work();
    connection.Watch({});
    seen.longestSilence = std::max(seen.longestSilence, OwnMilliseconds() - last);
    if (stopped) seen.afterNo = OwnMilliseconds() - *stopped;
    return seen;
}

/// The longest time that a user could wait after the stop, in milliseconds: between two questions, or from the no to
/// the end at one of several places. Of short work the best of several rounds counts, since other programs disturb.
double LongestWait(jet::Connection& connection, const std::function<void()>& work) {
    constexpr double kLong = 3000;
    constexpr int kPlaces[] = {1000, 50, 4}; // behind such a part of the questions
    Watched whole;
    const double once = Milliseconds([&] { whole = Watch(connection, work, std::numeric_limits<int>::max()); });
    const int rounds = once > kLong ? 1 : 3;
    const auto best = [&](const std::function<double()>& wait) {
        double least = wait();
        for (int round = 1; round < rounds; ++round)
            least = std::min(least, wait());
        return least;
    };
    double longest = whole.longestSilence;
    if (rounds > 1)
        longest = best([&] { return Watch(connection, work, std::numeric_limits<int>::max()).longestSilence; });
    for (const int part : kPlaces)
        longest = std::max(longest, best([&] { return Watch(connection, work, 1 + whole.questions / part).afterNo; }));
    return whole.questions > 1 ? longest : kMissed;
}

/// Reads the rows of a statement to the end, as far as it isn't stopped.
void ReadRows(jet::Connection& connection, const QString& sql) {
    try {
        for (auto rows = connection.OpenRecordset(sql.toStdString(), jet::CursorType::ForwardOnly); !rows.atEnd();)
            rows.MoveNext();
    } catch (const jet::Error& error) {
        if (error.number() != jet::ErrorNumber::Interrupted) throw;
    }
}

} // namespace

void MeasureStops(Report& report, const BenchSession& session) {
    const auto bound = [&](const std::string& what, jet::Connection& connection, const std::function<void()>& work) {
        report.Bound(
            what, [&] { return LongestWait(connection, work); }, kAtMost, "ms");
    };
    const std::string scanned = "stop: statistics of everything on the image, to the end of the statement";
    const std::string sorted = "stop: a join of everything with its order, in SQLite";
    const std::string plain = "stop: statistics of everything in SQLite";
    const std::string recent = "stop: most recent data of everything";
    const std::string wizards = "stop: a wizard's questions about a million values";
    const std::string all[] = {scanned, sorted, plain, recent, wizards};
    if (std::ranges::none_of(all, [&](const std::string& what) { return report.Wants(what); })) return;
    WaitForColumns();
    const auto rows = jet::Connection::Open(session.working, DatabasePassword(), jet::Use::Working);
    rows->LeaveOutStep("column-scans");
    bound(scanned, *Connection, [] { ReadRows(*Connection, StatisticsStatement(AnotherFilter())); });
    bound(plain, *rows, [&] { ReadRows(*rows, StatisticsStatement(AnotherFilter())); });
    bound(sorted, *rows, [&] { ReadRows(*rows, RequeryStatement({}, QStringLiteral(" ORDER BY D.Datavalue"))); });
    bound(recent, *Connection, [] { (void)MakeMostRecentTables(); });
    SelectMillion();
    bound(wizards, *Connection, AskSeven);
    SelectEverything();
}

} // namespace tessaro::bench
