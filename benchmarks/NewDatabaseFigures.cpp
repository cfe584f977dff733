#include "Figures.h"
#include "Play.h"
#include "calculate/DatabaseBuilder.h"
#include "calculate/WorkingTables.h"
#include "session/Query.h"
#include "session/Session.h"

#include <QCoreApplication>
#include <QTemporaryDir>

#include <cstdio>

namespace tessaro::bench {

namespace {

constexpr auto kNewDatabase = "--play-new-database"; // --play-new-database INSTALLATION DATABASE: time and memory

/// One result for each of some areas.
DataEntrySheet MakeResult() {
    DataEntrySheet result{QStringLiteral("Derived"),
                          QStringLiteral("Shares"),
                          QStringLiteral("Share of the total"),
                          QStringLiteral("Per cent"),
                          {}};
    Records areas = Select(QStringLiteral("SELECT AreaID, AreaName FROM Area"));
    for (; !areas.atEnd(); areas.MoveNext())
        result.rows.push_back({QStringLiteral("2000"), areas.Text("AreaID"), areas.Text("AreaName"),
                               QStringLiteral("12.50"), QStringLiteral("Total"), QStringLiteral("Own_Calculation")});
    return result;
}

int Build(const QString& installation, const QString& database) {
    const BenchSession session(database, installation);
    SelectEverything();
    if (!Execute(QStringLiteral("DELETE * FROM _SelTimePeriod WHERE TimePeriodNId > 5"))) return 3;
    bDataChanged = true;
    if (!CreateDataTable()) return 4;
    const DataEntrySheet result = MakeResult();
    const QTemporaryDir folder;
    const QString target = folder.filePath(QStringLiteral("New.mdb"));
    BuiltDatabase built;
    const double milliseconds =
        Milliseconds([&] { built = BuildDatabase(result, true, target, QStringLiteral("Share")); });
    if (!built.made) return 5;
    const auto made = CreateTheConnection(target);
    Records rows = Select(QStringLiteral("SELECT Count(*) FROM Data"), jet::CursorType::Static, made.get());
    std::printf("rows %lld\nmilliseconds %f\nmost %f\n", rows.Number(std::size_t{0}), milliseconds,
                MemoryMegabytes("VmHWM:"));
    return 0;
}

} // namespace

void MeasureNewDatabase(Report& report, const QString& self, const QString& database, const QString& installation) {
    const std::string time = "new database of 500,000 data rows, marks included";
    const std::string memory = "resident at most, while it is made";
    if (!report.Wants(time) && !report.Wants(memory)) return;
    const QTemporaryDir home;
    const auto figures = Play(self, {QLatin1String(kNewDatabase), installation, database}, home.path());
    const bool enough = FigureOr(figures, "rows", 0) >= 500'000;
    report.Bound(time, enough ? FigureOr(figures, "milliseconds", kMissed) : kMissed, 20'000, "ms");
    report.Bound(memory, enough ? FigureOr(figures, "most", kMissed) : kMissed, 300, "MB");
}

bool PlayNewDatabase(int argc, char** argv, int& status) {
    if (argc != 4 || QByteArray(argv[1]) != kNewDatabase) return false;
    const QCoreApplication application(argc, argv);
    status = Build(QString::fromLocal8Bit(argv[2]), QString::fromLocal8Bit(argv[3]));
    return true;
}

} // namespace tessaro::bench
