#include "layers/AreaOutlines.h"

#include "layers/MapFiles.h"
#include "session/Query.h"

namespace tessaro {

AreaOutlines::AreaOutlines() {
    for (Records rows = Select(QStringLiteral("SELECT AreaID, MapFile FROM Area"), jet::CursorType::ForwardOnly);
         !rows.atEnd(); rows.MoveNext())
        mapOf_.insert(rows.Text(std::size_t{0}).trimmed().toUpper(), rows.Text(1));
}

const AreaOutlines::Outlines& AreaOutlines::OutlinesIn(const QString& mapFile) {
    const auto known = maps_.constFind(mapFile);
    if (known != maps_.constEnd()) return *known;
    Outlines outlines;
    const QString path = MapPath(mapFile);
    LayerReading reading = path.isEmpty() ? LayerReading{} : OpenAreaMap(path);
    if (reading.layer && reading.layer->kind == LayerKind::Polygon) {
        outlines.layer = std::move(*reading.layer);
        const std::vector<QString> ids = AreaIdsOf(outlines.layer);
        for (std::size_t i = 0; i < ids.size(); ++i)
            if (!ids[i].isEmpty()) outlines.features.insert(ids[i], static_cast<int>(i));
    }
    return *maps_.insert(mapFile, std::move(outlines));
}

std::vector<std::vector<QPointF>> AreaOutlines::RingsOf(const QString& areaId) {
    const QString id = areaId.trimmed().toUpper();
    const Outlines& outlines = OutlinesIn(mapOf_.value(id));
    std::vector<std::vector<QPointF>> rings;
    const auto found = outlines.features.constFind(id);
    if (found == outlines.features.constEnd()) return rings;
    const MapFeature& feature = outlines.layer.features[static_cast<std::size_t>(*found)];
    for (int part = feature.firstPart; part < feature.endPart; ++part)
        rings.emplace_back(outlines.layer.FirstOf(part), outlines.layer.EndOf(part));
    return rings;
}

} // namespace tessaro
