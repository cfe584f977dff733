#include "Figures.h"
#include "database/Database.h"
#include "layers/LayerReader.h"
#include "map/project/ProjectFile.h"
#include "platform/Paths.h"
#include "session/Query.h"
#include "session/Session.h"

#include <QTemporaryDir>

namespace tessaro::bench {

namespace {

/// A value for each county, in five classes.
void FillMapData() {
    Execute(QStringLiteral("DELETE * FROM _MapData"));
    Execute(QStringLiteral("INSERT INTO _MapData (TimePeriod, AreaID, AreaName, [Indicator], SubPop, DataValue, Unit, "
                           "Source, BreakValue, [Label], [Color]) SELECT '2009', AreaID, AreaName, 'Unemployment', "
                           "'Total', '' & (AreaNId Mod 300) / 10, 'Percent', 'Bureau of Labor Statistics', AreaNId Mod "
                           "5 + 1, '1.2 - 6.0', 255 FROM Area WHERE AreaLevel = 4"));
}

MapDraft DraftOfFiveClasses() {
    MapDraft draft;
    for (int i = 0; i < 5; ++i) {
        draft.classes.classes.push_back({});
        draft.classes.looks.emplace_back();
    }
    return draft;
}

} // namespace

void MeasureProject(Report& report, const QString& installation) {
    const std::string what = "map: project and table of 3,231 counties";
    if (!report.Wants(what)) return;
    LayerReading counties = ReadLayer(installation + QStringLiteral("/Maps/USA_Counties.shp"));
    if (!counties.layer || !OpenDatabaseFile(FindPath(installation + QStringLiteral("/Data/Tessaro World.mdb"))))
        return report.Bound(what, 1, 0, "no database or layer");
    LayerStack layers;
    layers.Add(std::move(*counties.layer), QLatin1String(kDataTag)).file = QStringLiteral("/maps/USA_Counties.shp");
    FillMapData();
    const MapDraft draft = DraftOfFiveClasses();
    const QTemporaryDir folder;
    bool written = true;
    report.Bound(
        what,
        [&] {
            const MapPage page{draft, layers, layers.FullExtent(), QSize(1280, 800)};
            return Milliseconds(
                [&] { written = WriteProjectFile(folder.filePath(QStringLiteral("map.apr")), page) && written; }, 5);
        },
        500, "ms");
    if (!written) report.Bound(what, 1, 0, "not written");
    Execute(QStringLiteral("DELETE * FROM _MapData"));
    Connection.reset();
}

} // namespace tessaro::bench
