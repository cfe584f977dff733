#include "Figures.h"
#include "Play.h"
#include "database/UseOfFile.h"
#include "exchange/DatabaseRows.h"
#include "exchange/DraftGuess.h"
#include "exchange/ImportCheck.h"
#include "exchange/OpenSource.h"
#include "office/SpreadsheetApplication.h"
#include "platform/Paths.h"
#include "session/Session.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <cstdio>

namespace tessaro::bench {

namespace {

constexpr auto kExport = "--play-export";     // --play-export INSTALLATION DATABASE
constexpr auto kWorkbook = "--play-workbook"; // --play-workbook INSTALLATION DATABASE
constexpr int kWorkbookRows = 60'000;

constexpr auto kByHand =
    "SELECT T.TimePeriod, A.AreaID, A.AreaName, I.Indicator, D.Datavalue, U.Unit, P.Subpop, S.Source, F.FootNote FROM "
    "Data D JOIN TimePeriod T ON T.TimePeriodNId = D.TimePeriodNId JOIN Area_en A ON A.AreaNId = D.AreaNId JOIN "
    "Indicator_Unit_Subpop C ON C.IUSNId = D.IUSNId JOIN Indicator_en I ON I.IndicatorGId = C.IndicatorGId JOIN "
    "Unit_en U ON U.UnitGId = C.UnitGId JOIN Subpop_en P ON P.SubpopGId = C.SubpopGId JOIN Source_en S ON S.SourceNId "
    "= "
    "D.SourceNId LEFT JOIN Footnote_en F ON F.FootNoteNId = D.FootnoteNId";

bool EndsWell(QProcess& process) {
    return process.waitForFinished(-1) && process.exitCode() == 0;
}

bool Print(const QString& database, const QString& output) {
    QProcess process;
    process.setStandardOutputFile(output);
    process.start(QStringLiteral("sqlite3"),
                  {QStringLiteral("-csv"), QStringLiteral("file:%1?mode=ro").arg(database), QLatin1String(kByHand)});
    return EndsWell(process);
}

bool Convert(const QString& profile, const QString& format, const QString& folder, const QString& file) {
    QProcess process;
    process.start(QStringLiteral("soffice"), {profile, QStringLiteral("--headless"), QStringLiteral("--convert-to"),
                                              format, QStringLiteral("--outdir"), folder, file});
    return EndsWell(process);
}

qint64 LinesOf(const QString& path) {
    QFile file(path);
    qint64 lines = 0;
    if (!file.open(QIODevice::ReadOnly)) return -1;
    for (QByteArray piece = file.read(1 << 20); !piece.isEmpty(); piece = file.read(1 << 20))
        lines += piece.count('\n');
    return lines;
}

int Export(const QString& installation, const QString& database) {
    const BenchSession session(database, installation);
    const QTemporaryDir folder;
    const QString ours = folder.filePath(QStringLiteral("Ours.csv"));
    const QString theirs = folder.filePath(QStringLiteral("Theirs.csv"));
    bool good = true;
    const double save = Milliseconds([&] {
        DatabaseRows rows;
        good = SaveLongCsv(ours, {rows.Count(), [&rows](int number) { return rows.At(number); }});
    });
    const double print = Milliseconds([&] { good = good && Print(database, theirs); });
    if (!good || LinesOf(ours) != LinesOf(theirs) + 1) return 3; // ours has heads
    std::printf("save %f\nprint %f\nmost %f\n", save, print, MemoryMegabytes("VmHWM:"));
    return 0;
}

bool WriteWorkbook(const QString& folder, const QString& profile) {
    QFile file(folder + QStringLiteral("/Values.csv"));
    if (!file.open(QIODevice::WriteOnly)) return false;
    file.write("Year,Area,Indicator,Value\n");
    for (int row = 0; row < kWorkbookRows; ++row)
        file.write(QByteArray::number(1970 + row % 50) + ",Area " + QByteArray::number(row / 50 % 200) + ",Indicator " +
                   QByteArray::number(row / 10'000) + ',' + QByteArray::number(row * 1.25) + '\n');
    file.close();
    return Convert(profile, QStringLiteral("xlsx"), folder, file.fileName());
}

/// A workbook checked as an import, against the spreadsheet program that opens it and writes its first sheet as CSV.
int CheckWorkbook(const QString& installation, const QString& database) {
    const BenchSession session(database, installation);
    const QTemporaryDir folder;
    const QString profile =
        QStringLiteral("-env:UserInstallation=file://") + folder.filePath(QStringLiteral("profile"));
    if (!WriteWorkbook(folder.path(), profile)) return 3;
    const QString book = folder.filePath(QStringLiteral("Values.xlsx"));
    office::SpreadsheetApplication::SetProfileFolder(folder.filePath(QStringLiteral("office")));
    std::unique_ptr<CheckedImport> checked;
    const double check = Milliseconds([&] {
        ImportDraft draft = GuessDraft(book);
        draft.makesAreas = true;
        const QString base = FindPath(DatabaseTemplate());
        checked = CheckImport(book, draft,
                              {ImportInto::Template, base, folder.filePath(QStringLiteral("New.mdb")), Language});
    });
    office::SpreadsheetApplication::QuitAll();
    bool good = checked->counts.fresh == kWorkbookRows;
    const double open = Milliseconds(
        [&] { good = good && Convert(profile, QStringLiteral("csv"), folder.filePath(QStringLiteral("out")), book); });
    if (!good) return 4;
    std::printf("check %f\nopen %f\n", check, open);
    return 0;
}

} // namespace

void MeasureExchange(Report& report, const QString& self, const QString& database, const QString& installation) {
    const std::string exported = "all values of the database as CSV, against SQLite's shell (ratio)";
    const std::string memory = "resident at most, while a database is exported";
    const std::string workbook = "workbook of 60,000 rows checked, against opening it (ratio)";
    const QTemporaryDir home;
    const auto ratio = [](const std::map<QByteArray, double>& figures, const char* ours, const char* theirs) {
        return FigureOr(figures, ours, kMissed) / FigureOr(figures, theirs, 1);
    };
    if (report.Wants(exported) || report.Wants(memory)) {
        const auto figures = Play(self, {QLatin1String(kExport), installation, database}, home.path());
        report.Bound(exported, ratio(figures, "save", "print"), 2, "times");
        report.Bound(memory, FigureOr(figures, "most", kMissed), 300, "MB");
    }
    if (!report.Wants(workbook)) return;
    const auto figures = Play(self, {QLatin1String(kWorkbook), installation, database}, home.path());
    report.Bound(workbook, ratio(figures, "check", "open"), 3, "times");
}

bool PlayExchange(int argc, char** argv, int& status) {
    if (argc != 4) return false;
    const QByteArray part(argv[1]);
    if (part != kExport && part != kWorkbook) return false;
    const QCoreApplication application(argc, argv);
    const QString installation = QString::fromLocal8Bit(argv[2]);
    const QString database = QString::fromLocal8Bit(argv[3]);
    status = part == kExport ? Export(installation, database) : CheckWorkbook(installation, database);
    return true;
}

} // namespace tessaro::bench
