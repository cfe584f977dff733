#include "Figures.h"
#include "Play.h"
#include "database/UseOfFile.h"
#include "exchange/DraftGuess.h"
#include "exchange/ImportWriter.h"
#include "platform/Paths.h"
#include "session/Query.h"
#include "session/Session.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

#include <cstdio>

namespace tessaro::bench {

namespace {

constexpr auto kImport = "--play-import"; // --play-import INSTALLATION DATABASE: times and memory
constexpr int kRows = 1'000'000;

/// A long table of a million values: 100 indicators, 50 periods, 200 areas of the database.
bool WriteTable(const QString& path) {
    QStringList areas;
    for (Records rows = Select(QStringLiteral("SELECT TOP 200 AreaID, AreaName FROM Area")); !rows.atEnd();
         rows.MoveNext())
        areas << rows.Text("AreaID") + QStringLiteral(",\"") + rows.Text("AreaName") + QLatin1Char('"');
    QFile file(path);
    if (areas.isEmpty() || !file.open(QIODevice::WriteOnly)) return false;
    file.write("Year,Area ID,Area,Indicator,Unit,Subgroup,Source,Value\n");
    for (int row = 0; row < kRows; ++row) {
        const int area = row % 200;
        const int period = row / 200 % 50;
        const int indicator = row / 10'000;
        file.write(QByteArray::number(1970 + period) + ',' + areas[area % areas.size()].toUtf8() +
                   ",Imported indicator " + QByteArray::number(indicator) + ",Number,Total,Office_Figures," +
                   QByteArray::number(row) + '.' + QByteArray::number(period) + '\n');
    }
    return true;
}

int Import(const QString& installation, const QString& database) {
    const BenchSession session(database, installation);
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("Values.csv"));
    if (!WriteTable(file)) return 3;
    const ImportTarget target{ImportInto::Template, FindPath(DatabaseTemplate()),
                              folder.filePath(QStringLiteral("New.mdb")), Language};
    std::unique_ptr<CheckedImport> checked;
    const double check = Milliseconds([&] {
        ImportDraft draft = GuessDraft(file);
        draft.makesAreas = true;
        checked = CheckImport(file, draft, target);
    });
    if (checked->counts.fresh != kRows) return 4;
    WrittenImport written;
    const double write = Milliseconds([&] { written = WriteImport(*checked); });
    if (!written.made) return 5;
    std::printf("check %f\nwrite %f\nmost %f\n", check, write, MemoryMegabytes("VmHWM:"));
    return 0;
}

} // namespace

void MeasureImport(Report& report, const QString& self, const QString& database, const QString& installation) {
    const std::string check = "CSV of 1 million rows, mapped and checked";
    const std::string write = "the same written into a new database, marks included";
    const std::string memory = "resident at most, while a CSV is imported";
    if (!report.Wants(check) && !report.Wants(write) && !report.Wants(memory)) return;
    const QTemporaryDir home;
    const auto figures = Play(self, {QLatin1String(kImport), installation, database}, home.path());
    report.Bound(check, FigureOr(figures, "check", kMissed), 5'000, "ms");
    report.Bound(write, FigureOr(figures, "write", kMissed), 15'000, "ms");
    report.Bound(memory, FigureOr(figures, "most", kMissed), 300, "MB");
}

bool PlayImport(int argc, char** argv, int& status) {
    if (argc != 4 || QByteArray(argv[1]) != kImport) return false;
    const QCoreApplication application(argc, argv);
    status = Import(QString::fromLocal8Bit(argv[2]), QString::fromLocal8Bit(argv[3]));
    return true;
}

} // namespace tessaro::bench
