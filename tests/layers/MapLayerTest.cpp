#include "layers/MapLayer.h"

#include "layers/HandMadeLayer.h"

#include <gtest/gtest.h>

namespace tessaro {

using test::Add;
using test::Square;

TEST(MapLayerTest, FindsThePolygonAtAPoint) {
    MapLayer layer;
    Add(layer, {Square(0, 0, 10), Square(4, 4, 2), Square(20, 0, 5)}); // a hole, and an island
    Add(layer, {});
    Add(layer, {Square(8, 8, 4)}); // over the corner of the first
    const struct {
        QPointF point;
        int feature;
    } cases[] = {{{1, 1}, 0}, {{5, 5}, -1}, {{22, 3}, 0}, {{15, 3}, -1}, {{9, 9}, 2}, {{11, 11}, 2}, {{-1, 5}, -1}};
    for (const auto& c : cases)
        EXPECT_EQ(layer.FeatureAt(c.point, 100), c.feature) << c.point.x();
}

TEST(MapLayerTest, FindsLinesAndPointsNearby) {
    MapLayer lines;
    lines.kind = LayerKind::Line;
    Add(lines, {{{0, 0}, {10, 0}, {10, 10}}});
    Add(lines, {{{50, 50}}});
    EXPECT_EQ(lines.FeatureAt({5, 0.5}, 1), 0);
    EXPECT_EQ(lines.FeatureAt({5, 1.5}, 1), -1);
    EXPECT_EQ(lines.FeatureAt({10.5, 10.5}, 1), 0);
    EXPECT_EQ(lines.FeatureAt({50, 50.5}, 1), 1);
    MapLayer points;
    points.kind = LayerKind::Point;
    Add(points, {{{1, 1}, {9, 9}}});
    EXPECT_EQ(points.FeatureAt({9.5, 9}, 1), 0);
    EXPECT_EQ(points.FeatureAt({5, 5}, 1), -1);
}

TEST(MapLayerTest, SearchesByDistance) {
    MapLayer layer;
    Add(layer, {Square(0, 0, 10), Square(4, 4, 2)});
    Add(layer, {});
    Add(layer, {Square(12, 0, 4)});
    EXPECT_EQ(layer.SearchByDistance({11, 5}, 1), (std::vector<int>{0}));
    EXPECT_EQ(layer.SearchByDistance({11, 2}, 1), (std::vector<int>{2, 0}));
    EXPECT_EQ(layer.SearchByDistance({11, 2}, 0.5), std::vector<int>());
    EXPECT_EQ(layer.SearchByDistance({5, 5}, 1), (std::vector<int>{0})) << "the edge of the hole";
    EXPECT_EQ(layer.NearestFeature({11.2, 2}, 2), 2);
    EXPECT_EQ(layer.NearestFeature({10.4, 2}, 2), 0);
    EXPECT_EQ(layer.NearestFeature({11, 20}, 2), -1);
    layer.kind = LayerKind::Line; // the same lines, now not closed
    EXPECT_EQ(layer.NearestFeature({14, 0.1}, 1), -1);
}

TEST(MapBoxTest, GrowsFromNothing) {
    MapBox box;
    EXPECT_TRUE(box.IsEmpty());
    EXPECT_FALSE(box.Meets(box));
    box.Add(MapBox());
    EXPECT_TRUE(box.IsEmpty());
    box.Add(QPointF(-3, -4));
    EXPECT_EQ(box, (MapBox{-3, -4, -3, -4}));
    EXPECT_FALSE(box.IsEmpty());
    box.Add(QPointF(5, 6));
    EXPECT_EQ(box, (MapBox{-3, -4, 5, 6}));
    EXPECT_TRUE(box.Meets({5, 6, 7, 8}));
    EXPECT_FALSE(box.Meets({5.1, 6, 7, 8}));
}

} // namespace tessaro
