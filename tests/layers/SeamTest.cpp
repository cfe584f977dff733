#include "layers/Seam.h"

#include "TestPlaces.h"
#include "layers/HandMadeLayer.h"
#include "layers/LayerReader.h"
#include "layers/LayerStack.h"

#include <gtest/gtest.h>

namespace tessaro {

namespace {

using test::Add;
using test::LayerOf;
using test::Square;

MapLayer Installed(const char* name) {
    LayerReading reading = ReadLayer(QStringLiteral(TESSARO_INSTALLATION "/Maps/") + QLatin1String(name));
    return reading.layer.value_or(MapLayer());
}

} // namespace

TEST(SeamTest, LiesWhereTheWidestBandEnds) {
    const struct {
        std::vector<LongitudeSpan> spans;
        std::optional<double> seam;
    } cases[] = {{{}, std::nullopt},
                 {{{-180, 180}}, std::nullopt},
                 {{{10, 20}, {30, 40}}, std::nullopt},
                 {{{-125, -66}, {-170, -160}}, std::nullopt},
                 {{{170, 180}, {-180, -60}}, 170},
                 {{{-180, -60}, {172, 180}, {144, 146}}, 144},
                 {{{-90, 90}, {-180, -170}, {170, 180}}, -90}};
    for (const auto& c : cases)
        EXPECT_EQ(SeamOf(c.spans).value_or(999), c.seam.value_or(999));
}

TEST(SeamTest, MovesPartsAndBringsThemBack) {
    MapLayer layer =
        LayerOf(LayerKind::Polygon, {{Square(-170, 50, 10), Square(172, 51, 8)}, {}, {Square(140, 10, 5)}});
    ApplySeam(layer, 140);
    EXPECT_EQ(layer.features[0].box, (MapBox{-188, 50, -160, 60}));
    EXPECT_EQ(layer.extent, (MapBox{-220, 10, -160, 60}));
    EXPECT_EQ(layer.FeatureAt({-185, 55}, 0), 0);
    EXPECT_EQ(WithinWorld(-185), 175);
    EXPECT_EQ(WithinWorld(-180), -180);
    EXPECT_EQ(WithinWorld(12), 12);
    ApplySeam(layer, std::nullopt);
    EXPECT_EQ(layer.extent, (MapBox{-170, 10, 180, 60}));
}

TEST(SeamTest, BoxesOfFeaturesOnBothSidesAreOfTheLargerOne) {
    const MapLayer layer =
        LayerOf(LayerKind::Polygon, {{Square(30, 50, 40), Square(-180, 60, 10)}, {Square(-10, 40, 5)}, {}});
    EXPECT_EQ(BoxAround(layer, {0}), (MapBox{30, 50, 70, 90}));
    EXPECT_EQ(BoxAround(layer, {0, 1}), (MapBox{-10, 40, 70, 90}));
    EXPECT_TRUE(BoxAround(layer, {2}).IsEmpty());
    EXPECT_TRUE(BoxAround(layer, {}).IsEmpty());
}

TEST(LayerStackTest, StatesAcross180LieTogether) {
    LayerStack stack;
    EXPECT_TRUE(stack.FullExtent().IsEmpty());
    stack.Add(Installed("USA_Counties.shp"), QStringLiteral("Data"));
    EXPECT_NEAR(stack.FullExtent().Width(), 151, 1);
    EXPECT_LT(stack.XScale(), 0.9);
    const double alone = stack.XScale();
    stack.Add(Installed("World.shp"), {}); // has land at every longitude
    EXPECT_NEAR(stack.FullExtent().Width(), 360, 0.01);
    EXPECT_NEAR(stack.At(0).data.extent.Width(), 359, 1) << "one seam for both";
    stack.Remove(1);
    EXPECT_NEAR(stack.FullExtent().Width(), 151, 1);
    EXPECT_EQ(stack.XScale(), alone);
}

TEST(LayerStackTest, CirclesAcross180StayAtTheirPlaces) {
    const std::vector<std::vector<test::Ring>> circles{{Square(-184, 50, 9)}, {Square(175, 50, 9)}};
    LayerStack world;
    world.Add(Installed("World.shp"), {});
    const double scale = world.XScale();
    for (int turn = 0; turn < 2; ++turn) {
        world.Add(LayerOf(LayerKind::Polygon, circles), {});
        EXPECT_EQ(world.At(turn + 1).data.extent, (MapBox{-184, 50, 184, 59})) << "the world isn't cut elsewhere";
    }
    EXPECT_NEAR(world.XScale(), scale, 0.01);
    LayerStack states;
    states.Add(Installed("USA_Counties.shp"), {});
    states.Add(LayerOf(LayerKind::Polygon, circles), {});
    states.Add(LayerOf(LayerKind::Polygon, circles), {});
    EXPECT_EQ(states.At(1).data.extent, (MapBox{-185, 50, -175, 59})) << "both beside the islands they belong to";
}

TEST(LayerStackTest, LayersInMetresStayAsTheyAre) {
    LayerStack stack;
    stack.Add(LayerOf(LayerKind::Polygon, {{Square(-170, 50, 10), Square(172, 51, 8)}}), {});
    stack.Add(LayerOf(LayerKind::Point, {{{{500000, 200000}}}}), {});
    EXPECT_EQ(stack.At(1).data.extent.left, 500000);
    EXPECT_EQ(stack.XScale(), 1);
    stack.Remove(1);
    EXPECT_NEAR(stack.FullExtent().Width(), 28, 1e-9);
    stack.Clear();
    EXPECT_EQ(stack.Count(), 0);
    EXPECT_TRUE(stack.FullExtent().IsEmpty());
}

} // namespace tessaro
