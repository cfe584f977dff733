#include "map/wizard/FirstView.h"

#include "map/MapLayerList.h"

#include <gtest/gtest.h>

namespace tessaro::test {

namespace {

struct Square {
    double left, bottom, side;
};
using Shape = std::vector<Square>; ///< the parts of an area

MapLayer LayerOf(const std::vector<Shape>& shapes) {
    MapLayer layer;
    layer.fields = {QStringLiteral("ID_")};
    layer.columns.resize(1);
    for (const Shape& shape : shapes) {
        MapFeature feature{layer.PartCount(), 0, {}};
        for (const auto& [left, bottom, side] : shape) {
            for (const QPointF& corner : {QPointF(0, 0), QPointF(0, side), QPointF(side, side), QPointF(side, 0)}) {
                layer.points.push_back(QPointF(left, bottom) + corner);
                feature.box.Add(layer.points.back());
            }
            layer.partStarts.push_back(static_cast<int>(layer.points.size()));
        }
        feature.endPart = layer.PartCount();
        layer.extent.Add(feature.box);
        layer.columns[0] << QStringLiteral("A%1").arg(layer.features.size());
        layer.features.push_back(feature);
    }
    return layer;
}

/// A row of squares without gaps, each a degree wide.
std::vector<Shape> RowOf(int count) {
    std::vector<Shape> row;
    for (int i = 0; i < count; ++i)
        row.push_back({{static_cast<double>(i), 0, 1}});
    return row;
}

std::vector<Shape> With(std::vector<Shape> shapes, const std::vector<Shape>& more) {
    shapes.insert(shapes.end(), more.begin(), more.end());
    return shapes;
}

FirstView ViewOf(const std::vector<Shape>& shapes, int withValue) {
    LayerStack map;
    map.Add(LayerOf(shapes), QLatin1String(kDataTag));
    std::vector<MapArea> rows;
    for (int i = 0; i < withValue; ++i)
        rows.push_back({QStringLiteral("A%1").arg(i), {}, {}, {}, {}, {}, 1.0});
    return FirstViewOf(map, MapAreas(std::move(rows)));
}

} // namespace

TEST(FirstViewTest, HoldsTheBulkOfTheAreasWithAValue) {
    const struct {
        const char* name;
        std::vector<Shape> shapes;
        int withValue; ///< of the first so many
        bool full;
        double left, right;
        int outside;
    } cases[] = {
        {"one block", RowOf(20), 20, true, 0, 0, 0},
        {"one far to the east", With(RowOf(20), {{{90, 0, 1}}}), 21, false, 0, 20, 1},
        {"one far to the west and one to the north", With(RowOf(20), {{{-60, 0, 1}}, {{5, 40, 1}}}), 22, false, 0, 20,
         2},
        {"one beside the longer side", With(RowOf(20), {{{5, 15, 1}}}), 21, true, 0, 0, 0},
        {"a near island stays", With(RowOf(20), {{{20.5, 0, 1}}, {{80, 0, 1}}}), 22, false, 0, 21.5, 1},
        {"a far part of an area is no area", With(RowOf(20), {{{20, 0, 1}, {90, 0, 0.5}}}), 21, false, 0, 21, 0},
        {"more than a tenth", With(RowOf(20), {{{90, 0, 1}}, {{91, 0, 1}}, {{92, 0, 1}}}), 23, true, 0, 0, 0},
        {"a few areas of many", RowOf(60), 12, false, 0, 12, 0},
        {"half of the areas", RowOf(60), 30, true, 0, 0, 0},
        {"one area", RowOf(60), 1, false, 0, 1, 0},
        {"no value", RowOf(20), 0, true, 0, 0, 0},
        {"no shape", {Shape()}, 1, true, 0, 0, 0},
    };
    for (const auto& [name, shapes, withValue, full, left, right, outside] : cases) {
        const FirstView view = ViewOf(shapes, withValue);
        EXPECT_EQ(view.extent.IsEmpty(), full) << name;
        EXPECT_EQ(view.outside, outside) << name;
        if (full || view.extent.IsEmpty()) continue;
        const double margin = 0.03 * (right - left);
        EXPECT_NEAR(view.extent.left, left, margin) << name;
        EXPECT_NEAR(view.extent.right, right, margin) << name;
        EXPECT_LE(view.extent.left, left) << name;
        EXPECT_GE(view.extent.right, right) << name;
    }
}

} // namespace tessaro::test
