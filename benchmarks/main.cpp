#include "Figures.h"
#include "session/Session.h"

#include <QApplication>

#include <algorithm>
#include <cstdio>

namespace tessaro::bench {

namespace {

/// What other files than the database are made or read.
void MeasureFiles(Report& report, const QString& database, const QString& installation) {
    MeasureNewDatabase(report, QApplication::applicationFilePath(), database, installation);
    MeasureImport(report, QApplication::applicationFilePath(), database, installation);
    MeasureExchange(report, QApplication::applicationFilePath(), database, installation);
}

/// What is made of a part of the values, which is as large in every database.
void MeasureScreens(Report& report, const BenchSession& session) {
    MeasureGallery(report);
    MeasureExport(report);
    SelectEverything();
    MeasurePresentations(report);
    MeasureCalculations(report, session);
    MeasureMapData(report, session);
}

void MeasureInstallation(Report& report, const QString& installation) {
    MeasureLayers(report, installation);
    MeasureLabels(report, installation);
    MeasureCountyMap(report, installation);
    MeasureFirstMap(report, installation);
    MeasureProject(report, installation);
    MeasureMapWorkbook(report, installation);
    MeasureSummary(report, installation);
    MeasureHost(report);
}

} // namespace

} // namespace tessaro::bench

// bench DATABASE INSTALLATION [NAME]: prints the table of figures, or of those with NAME in theirs; exit status 1 when
// a bound is missed. Of a database of more than 5 million values only what hangs on their number is measured.
int main(int argc, char** argv) {
    using namespace tessaro;
    using namespace tessaro::bench;
    int status = 0;
    if (PlayProgram(argc, argv, status) || PlayNewDatabase(argc, argv, status) || PlayImport(argc, argv, status) ||
        PlayExchange(argc, argv, status))
        return status;
    if (argc != 3 && argc != 4) {
        std::fprintf(stderr, "usage: bench DATABASE INSTALLATION [PART OF A FIGURE'S NAME]\n");
        return 2;
    }
    const QString database = QString::fromLocal8Bit(argv[1]);
    const QString installation = QString::fromLocal8Bit(argv[2]);
    const QApplication application(argc, argv);
    constexpr double kUsual = 5e6;
    Report report(argc == 4 ? argv[3] : "", std::max(ValuesIn(database) / kUsual, 1.0));
    MeasureProgram(report, QApplication::applicationFilePath(), database, installation);
    if (!report.isLarge()) MeasureFiles(report, database, installation);
    {
        const BenchSession session(database, installation);
        SelectHalf();
        MeasureCrossFilters(report, session);
        SelectEverything();
        MeasureGrid(report, session); // leaves less selected
        SelectEverything();
        MeasureColumns(report, session);
        MeasureStops(report, session);
        MeasureDataOptions(report, session);
        MeasureCrosstabs(report, session);
        MeasureDatabase(report, session);
        if (!report.isLarge()) MeasureScreens(report, session);
        Connection.reset();
        MeasureSmallDatabase(report, installation);
    }
    if (!report.isLarge()) MeasureInstallation(report, installation);
    report.Print();
    return report.AllKept() ? 0 : 1;
}
