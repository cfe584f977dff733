#include "Figures.h"
#include "session/Session.h"

#include <QApplication>

#include <cstdio>

// bench DATABASE INSTALLATION: prints the table of figures; exit status 1 when a bound is missed.
int main(int argc, char** argv) {
    using namespace tessaro;
    using namespace tessaro::bench;
    int status = 0;
    if (PlayProgram(argc, argv, status)) return status;
    if (argc != 3) {
        std::fprintf(stderr, "usage: bench DATABASE INSTALLATION\n");
        return 2;
    }
    const QString database = QString::fromLocal8Bit(argv[1]);
    const QString installation = QString::fromLocal8Bit(argv[2]);
    const QApplication application(argc, argv);
    Report report;
    MeasureProgram(report, QApplication::applicationFilePath(), database, installation);
    {
        const BenchSession session(database, installation);
        SelectHalf();
        MeasureCrossFilters(report, session);
        SelectEverything();
        MeasureGrid(report, session);
        MeasureDatabase(report, session);
        MeasureExport(report);
        Connection.reset();
    }
    MeasureHost(report);
    report.Print();
    return report.AllKept() ? 0 : 1;
}
