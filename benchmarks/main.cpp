#include "Figures.h"
#include "session/Session.h"

#include <QApplication>

#include <cstdio>

// bench DATABASE INSTALLATION [NAME]: prints the table of figures, or of those with NAME in theirs; exit status 1 when
// a bound is missed.
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
    Report report(argc == 4 ? argv[3] : "");
    MeasureProgram(report, QApplication::applicationFilePath(), database, installation);
    MeasureNewDatabase(report, QApplication::applicationFilePath(), database, installation);
    MeasureImport(report, QApplication::applicationFilePath(), database, installation);
    MeasureExchange(report, QApplication::applicationFilePath(), database, installation);
    {
        const BenchSession session(database, installation);
        SelectHalf();
        MeasureCrossFilters(report, session);
        SelectEverything();
        MeasureGrid(report, session);
        MeasureColumns(report, session);
        MeasureStops(report, session);
        MeasureDataOptions(report, session);
        MeasureCrosstabs(report, session);
        MeasureDatabase(report, session);
        MeasureGallery(report);
        MeasureExport(report);
        SelectEverything();
        MeasurePresentations(report);
        MeasureCalculations(report, session);
        MeasureMapData(report, session);
        Connection.reset();
        MeasureSmallDatabase(report, installation);
    }
    MeasureLayers(report, installation);
    MeasureLabels(report, installation);
    MeasureCountyMap(report, installation);
    MeasureFirstMap(report, installation);
    MeasureProject(report, installation);
    MeasureMapWorkbook(report, installation);
    MeasureSummary(report, installation);
    MeasureHost(report);
    report.Print();
    return report.AllKept() ? 0 : 1;
}
