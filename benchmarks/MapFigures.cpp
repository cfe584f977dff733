#include "CountyMap.h"
#include "Figures.h"
#include "database/Database.h"
#include "layers/MapPicture.h"
#include "map/classes/BreakBounds.h"
#include "map/classes/MapDataValues.h"
#include "map/wizard/ThemeSymbols.h"
#include "platform/Paths.h"
#include "session/Query.h"
#include "session/Session.h"
#include "session/Startup.h"

#include <algorithm>
#include <random>

namespace tessaro::bench {

namespace {

const MapTheme kTheme{QStringLiteral("Map indicator"), {}, QStringLiteral("Map unit")};

/// Gives a fifth of all combinations, and with them a million values, one indicator and one unit.
void MakeLargeTheme() {
    Execute(
        QStringLiteral("UPDATE _SelIUSNId SET [Indicator] = 'Map indicator', Unit = 'Map unit' WHERE IUSNId <= 100"));
}

/// Keeps the first row of each area, some thousands of the others going at a time.
void DeleteAllButFirst(HandWritten& hand, const std::vector<std::int64_t>& ids,
                       const std::vector<std::int64_t>& rowsOfAreas) {
    std::vector<std::string> superseded;
    auto id = ids.begin();
    for (const std::int64_t rows : rowsOfAreas) {
        for (auto other = id + 1; other != id + rows; ++other)
            superseded.push_back(std::to_string(*other));
        id += rows;
    }
    for (std::size_t first = 0; first < superseded.size(); first += 6000) {
        std::string list = superseded[first];
        for (std::size_t i = first + 1; i < std::min(first + 6000, superseded.size()); ++i)
            list += "," + superseded[i];
        hand.Run("DELETE FROM work._MapData WHERE _MapDataID IN (" + list + ")");
    }
}

void GetDataByHand(HandWritten& hand) {
    hand.Run("BEGIN; DELETE FROM work._MapData; INSERT INTO work._MapData (TimePeriod, AreaID, AreaName, Indicator, "
             "SubPop, DataValue, Unit, Source, Style, BreakValue, Label, Color, AdvancedLabels, Size, "
             "Original_DataValue) SELECT T.TimePeriod, A.AreaID, A.AreaName, S.Indicator, S.Subpop, D.Datavalue, "
             "S.Unit, S.Source, 0, 0, '', 0, '', 0, D.Datavalue FROM sel._SelIUSNId S JOIN Data D ON D.IUSNId = "
             "S.IUSNId AND D.SourceNId = S.SourceNId JOIN sel._SelArea A ON A.AreaNId = D.AreaNId JOIN "
             "sel._SelTimePeriod T ON T.TimePeriodNId = D.TimePeriodNId WHERE S.Indicator = 'Map indicator' COLLATE "
             "NOCASE AND S.Unit = 'Map unit' COLLATE NOCASE AND NOT S.Deleted ORDER BY T.TimePeriod COLLATE NOCASE, "
             "A.AreaID COLLATE NOCASE, A.AreaName COLLATE NOCASE, S.Indicator COLLATE NOCASE, S.Subpop COLLATE "
             "NOCASE, S.Unit COLLATE NOCASE, S.Source COLLATE NOCASE");
    const std::vector<std::int64_t> ids =
        hand.Numbers("SELECT _MapDataID, AreaID, TimePeriod FROM work._MapData ORDER BY AreaID COLLATE NOCASE, "
                     "TimePeriod COLLATE NOCASE DESC",
                     0);
    const std::vector<std::int64_t> rowsOfAreas = hand.Numbers(
        "SELECT count(*) FROM work._MapData GROUP BY AreaID COLLATE NOCASE ORDER BY AreaID COLLATE NOCASE", 0);
    DeleteAllButFirst(hand, ids, rowsOfAreas);
    hand.Run("COMMIT");
}

double MillisecondsOfClasses(BreakMethod method) {
    return Milliseconds(
        [method] {
            ClassRequest request{method, 5, 2};
            const ValueLimits limits = LimitsOfMapData();
            SetRange(request, limits.minimum, limits.maximum);
            MapDataValues values;
            (void)ComputeClasses(values, request);
        },
        3);
}

double MillisecondsOfNaturalBreaks() {
    std::mt19937 random(3);
    std::vector<double> values;
    for (int i = 0; i < 3000; ++i)
        values.push_back(static_cast<double>(random() % 10000000) / 100);
    const std::vector<double> ascending = SortedValues(values);
    return Milliseconds([&] { (void)NaturalBreakBounds(ascending, 7); }, 5);
}

/// From the selection to the picture, as the wizard of maps goes it.
void DrawCounties() {
    CountyMap map;
    MakeCountyMap(map);
    (void)MapImage(map.layers, map.layers.FullExtent(), QSize(1280, 800), 1);
}

/// A bound of a class is moved and its colour changed; the wizard draws straight from the classes.
double MillisecondsOfChange() {
    CountyMap map;
    MakeCountyMap(map);
    ClassTable& table = map.draft.classes;
    const MapAreas areas = AreasOfMapData();
    const std::vector<double> values = areas.Values();
    return Milliseconds(
        [&] {
            (void)EditClass(table, 1, Bound::To, table.classes[1].to == 7 ? 7.1 : 7, BreakChoice::Continuous, values);
            table.looks[1].color = table.looks[1].color.darker(101);
            for (int i = 0; i < map.layers.Count(); ++i)
                map.layers.At(i).symbols = SymbolsOfClasses(map.layers.At(i).data, areas, table);
            (void)MapImage(map.layers, map.layers.FullExtent(), QSize(1280, 800), 1);
        },
        10);
}

} // namespace

void MeasureMapData(Report& report, const BenchSession& session) {
    SelectEverything();
    MakeLargeTheme();
    {
        const BenchSession::Copies copies = session.CopyForHand();
        HandWritten hand(session.database, copies.selections, copies.working);
        report.Compare(
            "map: latest of a million values for each area", [] { (void)Get_Data(kTheme); },
            [&] { GetDataByHand(hand); }, 1.5);
    }
    Execute(QStringLiteral("DELETE * FROM _MapData"));
    Execute(
        QStringLiteral("INSERT INTO _MapData (TimePeriod, AreaID, DataValue) SELECT '2000', 'A' & RowNId, Datavalue "
                       "FROM Data WHERE RowNId <= 100000"));
    report.Bound(
        "map: five classes of equal count, 100,000 values",
        [] { return MillisecondsOfClasses(BreakMethod::EqualCount); }, 300, "ms");
    report.Bound(
        "map: five classes of equal size, 100,000 values", [] { return MillisecondsOfClasses(BreakMethod::EqualSize); },
        300, "ms");
    report.Bound("map: natural breaks of 3,000 values", &MillisecondsOfNaturalBreaks, 100, "ms");
    Execute(QStringLiteral("DELETE * FROM _MapData"));
}

void MeasureCountyMap(Report& report, const QString& installation) {
    const std::string what = "map: 3,218 counties from the selection to the picture";
    const std::string change = "map: 3,218 counties from the change of a class to the picture";
    if (!report.Wants(what) && !report.Wants(change)) return;
    if (!OpenDatabaseFile(FindPath(installation + QStringLiteral("/Data/Tessaro World.mdb"))))
        return report.Bound(what, 1, 0, "no database");
    SelectCounties();
    report.Bound(
        what, [] { return Milliseconds(&DrawCounties, 3); }, 500, "ms");
    report.Bound(change, &MillisecondsOfChange, 40, "ms");
    Connection.reset();
}

} // namespace tessaro::bench
