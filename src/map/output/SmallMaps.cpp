#include "map/output/SmallMaps.h"

#include "layers/MapPicture.h"
#include "map/MapAreas.h"
#include "map/output/KeptMapData.h"
#include "map/output/MapDataSheets.h"
#include "map/output/MapSheet.h"
#include "map/output/MapWorkbook.h"
#include "map/output/SmallMapsPicture.h"
#include "office/Error.h"
#include "session/ErrorSink.h"
#include "session/Strings.h"

#include <algorithm>

namespace tessaro {

namespace {

/// The maps and all their values.
struct Collected {
    std::vector<SmallMap> maps;
    MapValues values;
    QStringList sources;
    bool older = false; ///< a map shows values of before its period
};

/// Labels of the values would be those of another period, and too large.
LayerStack WithoutLabels(const LayerStack& layers) {
    LayerStack plain = layers;
    for (int i = 0; i < plain.Count(); ++i)
        plain.At(i).labels.on = false;
    return plain;
}

void AddValues(Collected& collected, const QString& period) {
    MapValues values = ReadMapValues();
    if (collected.values.heads.isEmpty()) collected.values.heads = values.heads << PlainText(QStringLiteral("Map"));
    for (QStringList& row : values.rows) {
        collected.older = collected.older || row.front() != period;
        row << period;
        collected.values.rows.push_back(std::move(row));
    }
    for (const QString& source : SourcesOfMapData())
        if (!collected.sources.contains(source)) collected.sources << source;
}

/// Fills `_MapData` for a period, with the classes of the draft.
bool Fill(const MapDraft& draft, const QString& period) {
    const MapDataCounts counts = Get_Data(draft.theme, period);
    if (!counts.filled || (counts.areas > 0 && !SaveData(draft.classes)))
        throw office::Error(office::Failure::Call, QStringLiteral("the values of %1 can't be read").arg(period));
    return counts.areas > 0;
}

Collected Collect(const MapPage& page, const QStringList& periods, const WizardProgress& progress) {
    const KeptMapData kept;
    Collected collected;
    collected.values.heads = MapValueHeads() << PlainText(QStringLiteral("Map"));
    for (const QString& period : periods.mid(0, kMostSmallMaps)) {
        progress.Child(static_cast<int>(100 * collected.maps.size()) / kMostSmallMaps);
        if (!Fill(page.draft, period)) continue;
        SmallMap map{period, {}};
        for (int i = 0; i < page.layers.Count(); ++i) {
            const StackedLayer& layer = page.layers.At(i);
            const bool ofTheme = layer.tag == QLatin1String(kDataTag);
            map.symbols.push_back(ofTheme ? SymbolsOfMapData(layer.data, page.draft.classes.missing) : layer.symbols);
        }
        collected.maps.push_back(std::move(map));
        AddValues(collected, period);
    }
    std::sort(collected.sources.begin(), collected.sources.end());
    return collected;
}

} // namespace

QStringList SpreadPeriods(const QStringList& periods) {
    if (periods.size() <= kMostSmallMaps) return periods;
    QStringList spread;
    for (int i = 0; i < kMostSmallMaps; ++i)
        spread << periods.at(i * (periods.size() - 1) / (kMostSmallMaps - 1));
    return spread;
}

QString MakeSmallMaps(const MapPage& page, const QStringList& periods, const WizardProgress& progress) {
    const ErrorTrap trap("MakeSmallMaps");
    const Collected collected = Collect(page, periods, progress);
    const MapPlaces& places = PlacesOf(page.draft.layout);
    const SmallMapsPicture picture(WithoutLabels(page.layers), collected.maps, ShownExtent(page), ShownSize(page),
                                   places.room, page.draft.legendTitle.font);
    const QString note = collected.older ? PlainText(QStringLiteral("TS_SmallMapsNote")) : QString();
    const MapSheetContents contents{
        page.draft, picture.Size(),   picture.PointsOfPixel(), [&](int pixelWidth) { return picture.Draw(pixelWidth); },
        note,       collected.sources};
    return WriteMapWorkbook(contents, collected.values, progress);
}

} // namespace tessaro
