#include "DerivedLayers.h"

#include "CsvTable.h"
#include "layers/LabelPlaces.h"

#include <QString>

#include <cmath>
#include <map>
#include <tuple>
#include <utility>

namespace tessaro::content {

namespace {

using Ring = std::vector<QPointF>;

/// The shapes as the program has them once they are read.
MapLayer InMemory(const LayerContents& areas) {
    MapLayer layer;
    for (const LayerRecord& area : areas.records) {
        MapFeature feature{static_cast<int>(layer.partStarts.size()) - 1, 0, {}};
        for (const Ring& ring : area.parts) {
            layer.points.insert(layer.points.end(), ring.begin(), ring.end());
            layer.partStarts.push_back(static_cast<int>(layer.points.size()));
        }
        feature.endPart = static_cast<int>(layer.partStarts.size()) - 1;
        layer.features.push_back(feature);
    }
    return layer;
}

using Edge = std::tuple<double, double, double, double>; ///< the same in both directions

Edge EdgeOf(QPointF a, QPointF b) {
    if (std::tie(b.rx(), b.ry()) < std::tie(a.rx(), a.ry())) std::swap(a, b);
    return {a.x(), a.y(), b.x(), b.y()};
}

/// Which areas have an edge, by their places in the layer.
class Neighbours final {
  public:
    explicit Neighbours(const LayerContents& areas) {
        for (std::size_t area = 0; area < areas.records.size(); ++area)
            for (const Ring& ring : areas.records[area].parts)
                for (std::size_t i = 1; i < ring.size(); ++i)
                    areas_[EdgeOf(ring[i - 1], ring[i])].push_back(area);
    }
    /// The area behind an edge of `area`, if it comes later in the layer; otherwise `area` itself.
    [[nodiscard]] std::size_t Behind(std::size_t area, QPointF a, QPointF b) const {
        for (const std::size_t each : areas_.at(EdgeOf(a, b)))
            if (each > area) return each;
        return area;
    }

  private:
    std::map<Edge, std::vector<std::size_t>> areas_;
};

using Lines = std::map<std::size_t, std::vector<Ring>>; ///< by the area behind them

/// The runs of edges of a closed ring that have one area behind them.
void AddRuns(const Ring& ring, std::size_t area, const Neighbours& neighbours, Lines& lines) {
    const std::size_t edges = ring.size() - 1;
    const auto behind = [&](std::size_t edge) {
        return neighbours.Behind(area, ring[edge % edges], ring[edge % edges + 1]);
    };
    std::size_t start = 0; // where a run begins, so that none is cut at the end of the ring
    while (start < edges && behind(start) == behind(start + edges - 1))
        ++start;
    std::size_t before = area;
    for (std::size_t edge = start; edge < start + edges; ++edge) {
        const std::size_t other = behind(edge);
        if (other != area) {
            if (other != before || edge == start) lines[other].push_back({ring[edge % edges]});
            lines[other].back().push_back(ring[edge % edges + 1]);
        }
        before = other;
    }
}

QString Degrees(int degrees, const char* above, const char* below) {
    return QString::number(std::abs(degrees)) + QStringLiteral("° ") + QLatin1String(degrees > 0 ? above : below);
}

LayerRecord Meridian(int longitude, const QString& name) {
    const QString id = QStringLiteral("LON%1%2")
                           .arg(QLatin1String(longitude < 0 ? "-" : "+"))
                           .arg(std::abs(longitude), 3, 10, QLatin1Char('0'));
    LayerRecord record{id.toStdString(), name.toStdString(), {{}}};
    for (int latitude = -90; latitude <= 90; latitude += 10)
        record.parts[0].emplace_back(longitude, latitude);
    return record;
}

LayerRecord Parallel(const char* id, double latitude, const QString& name) {
    LayerRecord record{id, name.toStdString(), {{}}};
    for (int longitude = -180; longitude <= 180; longitude += 10)
        record.parts[0].emplace_back(longitude, latitude);
    return record;
}

} // namespace

LayerContents PointsOf(const LayerContents& areas) {
    const std::vector<LabelPlace> places = LabelPlaces(InMemory(areas));
    LayerContents points{ShapeKind::Points, {}};
    for (std::size_t i = 0; i < places.size(); ++i)
        points.records.push_back({areas.records[i].id, areas.records[i].name, {{places[i].at}}});
    return points;
}

LayerContents BordersOf(const LayerContents& areas) {
    const Neighbours neighbours(areas);
    LayerContents borders{ShapeKind::Lines, {}};
    for (std::size_t area = 0; area < areas.records.size(); ++area) {
        Lines lines;
        for (const Ring& ring : areas.records[area].parts)
            if (ring.size() > 1) AddRuns(ring, area, neighbours, lines);
        for (auto& [other, parts] : lines) {
            const LayerRecord& a = areas.records[area];
            const LayerRecord& b = areas.records[other];
            borders.records.push_back({a.id + "-" + b.id, a.name + " - " + b.name, std::move(parts)});
        }
    }
    return borders;
}

LayerContents Graticule() {
    constexpr double kTropic = 23.4362; // the tilt of the Earth's axis in 2026, in degrees
    LayerContents lines{ShapeKind::Lines, {}};
    for (int longitude = -150; longitude < 180; longitude += 30)
        lines.records.push_back(
            Meridian(longitude, longitude == 0 ? QStringLiteral("Prime meridian") : Degrees(longitude, "E", "W")));
    lines.records.push_back(Meridian(180, QStringLiteral("180°"))); // both edges of the map
    lines.records.back().parts.push_back(Meridian(-180, {}).parts[0]);
    const std::tuple<const char*, double, QString> parallels[] = {
        {"LAT+90-T", 90 - kTropic, QStringLiteral("Arctic Circle")},
        {"LAT+60", 60, Degrees(60, "N", "S")},
        {"LAT+30", 30, Degrees(30, "N", "S")},
        {"LAT+T", kTropic, QStringLiteral("Tropic of Cancer")},
        {"LAT+00", 0, QStringLiteral("Equator")},
        {"LAT-T", -kTropic, QStringLiteral("Tropic of Capricorn")},
        {"LAT-30", -30, Degrees(-30, "N", "S")},
        {"LAT-60", -60, Degrees(-60, "N", "S")},
        {"LAT-90+T", kTropic - 90, QStringLiteral("Antarctic Circle")}};
    for (const auto& [id, latitude, name] : parallels)
        lines.records.push_back(Parallel(id, latitude, name));
    return lines;
}

LayerContents ReadPlaces(const std::filesystem::path& table) {
    const CsvTable places = CsvTable::Read(table);
    LayerContents points{ShapeKind::Points, {}};
    for (std::size_t row = 0; row < places.rowCount(); ++row)
        points.records.push_back({places.Cell(row, "AreaID"),
                                  places.Cell(row, "Name"),
                                  {{QPointF(QString::fromStdString(places.Cell(row, "Longitude")).toDouble(),
                                            QString::fromStdString(places.Cell(row, "Latitude")).toDouble())}}});
    return points;
}

} // namespace tessaro::content
