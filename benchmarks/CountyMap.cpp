#include "CountyMap.h"

#include "map/MapData.h"
#include "map/classes/ColorSchemes.h"
#include "map/classes/MapDataValues.h"
#include "session/Query.h"

namespace tessaro::bench {

void SelectCounties() {
    for (const char* table : {"_SelArea", "_SelTimePeriod", "_SelIUSNId"})
        Execute(QStringLiteral("DELETE * FROM ") + QLatin1String(table));
    Execute(QStringLiteral("INSERT INTO _SelArea (AreaGId, AreaNId, AreaID, AreaName, AreaLevel, MapFile) SELECT "
                           "AreaGId, AreaNId, AreaID, AreaName, AreaLevel, MapFile FROM Area WHERE AreaLevel = 4"));
    Execute(QStringLiteral("INSERT INTO _SelTimePeriod (TimePeriodNId, TimePeriod) SELECT TimePeriodNId, TimePeriod "
                           "FROM TimePeriod WHERE TimePeriod = '2009'"));
    Execute(QStringLiteral("INSERT INTO _SelIUSNId (IUSNId, [Indicator], Unit, Subpop, SourceNId, Source, Deleted) "
                           "SELECT DISTINCT D.IUSNId, 'Unemployment', 'Percent', 'Total', D.SourceNId, 'Source', False "
                           "FROM Data AS D INNER JOIN Area AS A ON D.AreaNId = A.AreaNId WHERE A.AreaLevel = 4"));
}

void MakeCountyMap(CountyMap& map) {
    map.draft.theme = FirstTheme();
    (void)Get_Data(map.draft.theme);
    MapFiles files = Collect_Maps_As_Per_Data();
    ClassTable& table = map.draft.classes;
    table.kind = LoadLayers(map.layers, files, [](const QString&, const QString&) { return QString(); });
    ClassRequest request{BreakMethod::EqualCount, 5, SetDecimal()};
    const ValueLimits limits = LimitsOfMapData();
    SetRange(request, limits.minimum, limits.maximum);
    MapDataValues values;
    SetClasses(table, ComputeClasses(values, request), request.decimals);
    const std::vector<QColor> colors = SchemeColors(ColorSchemes().front(), 5);
    for (std::size_t i = 0; i < colors.size(); ++i)
        table.looks[i].color = colors[i];
    (void)SaveData(table);
    for (int i = 0; i < map.layers.Count(); ++i)
        map.layers.At(i).symbols = SymbolsOfMapData(map.layers.At(i).data, table.missing);
}

} // namespace tessaro::bench
