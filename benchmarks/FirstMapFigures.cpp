#include "CountyMap.h"
#include "Figures.h"
#include "database/Database.h"
#include "layers/MapCanvas.h"
#include "map/wizard/frmMapWizard.h"
#include "platform/Paths.h"
#include "session/Query.h"
#include "session/Session.h"

#include <QAbstractButton>

#include <algorithm>
#include <limits>

namespace tessaro::bench {

namespace {

constexpr int kRounds = 3;

/// 182 countries with the values of 68 years.
void SelectCountries() {
    for (const char* table : {"_SelArea", "_SelTimePeriod", "_SelIUSNId"})
        Execute(QStringLiteral("DELETE * FROM ") + QLatin1String(table));
    Execute(QStringLiteral("INSERT INTO _SelIUSNId (IUSNId, [Indicator], Unit, Subpop, SourceNId, Source, Deleted) "
                           "SELECT DISTINCT D.IUSNId, 'Price level', 'Ratio', 'Total', D.SourceNId, 'Source', False "
                           "FROM Data AS D INNER JOIN Indicator_Unit_Subpop AS IUS ON D.IUSNId = IUS.IUSNId WHERE "
                           "IUS.IndicatorGId = '-PL_GDPO'"));
    Execute(QStringLiteral("INSERT INTO _SelArea (AreaGId, AreaNId, AreaID, AreaName, AreaLevel, MapFile) SELECT "
                           "AreaGId, AreaNId, AreaID, AreaName, AreaLevel, MapFile FROM Area WHERE AreaNId IN (SELECT "
                           "AreaNId FROM Data WHERE IUSNId IN (SELECT IUSNId FROM _SelIUSNId))"));
    Execute(QStringLiteral("INSERT INTO _SelTimePeriod (TimePeriodNId, TimePeriod) SELECT TimePeriodNId, TimePeriod "
                           "FROM TimePeriod"));
}

/// From the click to the map on the display: the click opens the wizard and waits until it is closed. The map must have
/// so many areas.
double FirstMap(std::size_t areas) {
    double took = std::numeric_limits<double>::infinity();
    const double begun = ProcessorMilliseconds();
    frmMapWizard wizard({});
    const auto* map = wizard.findChild<MapCanvas*>();
    const auto* next = wizard.findChild<QAbstractButton*>(QStringLiteral("CmdNext"));
    QObject::connect(
        map, &MapCanvas::AfterLayerDraw, &wizard,
        [&] {
            if (!next->isEnabled() || !wizard.isVisible()) return;
            if (wizard.Theme().Areas().Rows().size() == areas) took = ProcessorMilliseconds() - begun;
            wizard.reject(); // nothing was chosen, so nothing is asked
        },
        Qt::QueuedConnection);
    wizard.exec();
    return took;
}

/// The first opening finds neither fonts nor maps in memory, and counts too.
double WorstFirstMap(std::size_t areas) {
    double worst = 0;
    for (int round = 0; round < kRounds; ++round)
        worst = std::max(worst, FirstMap(areas));
    return worst;
}

} // namespace

void MeasureFirstMap(Report& report, const QString& installation) {
    const std::string countries = "map: 182 countries from the click to the first map";
    const std::string counties = "map: 3,218 counties from the click to the first map";
    if (!report.Wants(countries) && !report.Wants(counties)) return;
    if (!OpenDatabaseFile(FindPath(installation + QStringLiteral("/Data/Tessaro World.mdb"))))
        return report.Bound(countries, 1, 0, "no database");
    SelectCountries();
    report.Bound(
        countries, [] { return WorstFirstMap(182); }, 500, "ms");
    SelectCounties();
    report.Bound(
        counties, [] { return WorstFirstMap(3218); }, 1000, "ms");
    Connection.reset();
}

} // namespace tessaro::bench
