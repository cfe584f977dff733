#include "map/wizard/IdentifiedFeature.h"

#include "layers/Seam.h"
#include "map/wizard/LayerDrafts.h"
#include "session/DisplayValue.h"
#include "session/Query.h"
#include "session/Strings.h"
#include "view/DataFilters.h"

#include <QLocale>

#include <algorithm>
#include <array>
#include <cmath>

namespace tessaro {

namespace {

constexpr double kLargestDegrees = 1000; ///< beyond that coordinates are metres or the like
constexpr int kDecimalsOfDegrees = 4;

QString Entry(const QString& caption, const QString& value) {
    return caption + QStringLiteral(" = ") + value;
}

QStringList EntriesOfArea(const QString& areaId) {
    const Records row = Select(QStringLiteral("Select AreaID, AreaName, DataValue, SubPop, Unit, TimePeriod  from "
                                              "_Mapdata  Where AreaID = ") +
                               Quoted(areaId));
    if (row.atEnd()) return {};
    const std::array<std::pair<const char*, QString>, 5> entries{
        {{"Comm_Area Name", row.Text("AreaName")},
         {"Comm_Datavalue", DisplayedValue(row.Text("DataValue"))},
         {"Subpop", row.Text("SubPop")},
         {"Comm_Unit", row.Text("Unit")},
         {"Comm_Time", row.Text("TimePeriod")}}};
    QStringList list;
    for (const auto& [key, value] : entries)
        list << Entry(PlainText(QLatin1String(key)), value);
    return list;
}

/// The fields of a layer in their order, those of names and ids before the others.
std::vector<int> FieldsInOrder(const MapLayer& layer) {
    std::vector<int> order;
    for (const char* first : {"NAME", "NAME1_", "ID_"})
        if (const int field = layer.FieldOf(QLatin1String(first)); field >= 0) order.push_back(field);
    for (int field = 0; field < layer.fields.size(); ++field)
        if (std::find(order.begin(), order.end(), field) == order.end() &&
            layer.fields[field].compare(QLatin1String("shape"), Qt::CaseInsensitive) != 0)
            order.push_back(field);
    return order;
}

} // namespace

std::vector<IdentifiedFeature> FeaturesNear(const LayerStack& map, QPointF place, double distance) {
    std::vector<IdentifiedFeature> found;
    for (int i = map.Count() - 1; i >= 0; --i) {
        if (!map.At(i).visible) continue;
        const MapLayer& layer = map.At(i).data;
        const int holding = layer.kind == LayerKind::Polygon ? layer.FeatureAt(place, 0) : -1;
        const int feature = holding >= 0 ? holding : layer.NearestFeature(place, distance);
        if (feature >= 0) found.push_back({i, feature});
    }
    return found;
}

QStringList Identify_list(const LayerStack& map, IdentifiedFeature found) {
    if (found.layer < 0 || found.layer >= map.Count()) return {};
    const StackedLayer& layer = map.At(found.layer);
    QStringList list;
    if (IsOfTheme(layer)) list = EntriesOfArea(layer.data.Text(found.feature, layer.data.IdField()).trimmed());
    if (!list.isEmpty()) return list;
    for (const int field : FieldsInOrder(layer.data))
        list << Entry(layer.data.fields[field], layer.data.Text(found.feature, field));
    return list;
}

QString PlaceText(QPointF place) {
    const QLocale locale;
    const QString between = QStringLiteral("; "); // a comma may be the decimal sign
    if (std::abs(place.x()) > kLargestDegrees || std::abs(place.y()) > kLargestDegrees)
        return locale.toString(std::floor(place.x()), 'f', 0) + between +
               locale.toString(std::floor(place.y()), 'f', 0);
    return locale.toString(WithinWorld(place.x()), 'f', kDecimalsOfDegrees) + between +
           locale.toString(place.y(), 'f', kDecimalsOfDegrees);
}

} // namespace tessaro
