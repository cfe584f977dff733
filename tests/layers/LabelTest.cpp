#include "TestPlaces.h"
#include "layers/HandMadeLayer.h"
#include "layers/LabelPainter.h"
#include "layers/LayerReader.h"
#include "layers/MapPicture.h"
#include "support/TimeBound.h"

#include <QGuiApplication>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <ctime>
#include <gtest/gtest.h>

namespace tessaro {

namespace {

using test::Add;
using test::LayerOf;
using test::Square;

int DarkPixels(const QImage& image) {
    int dark = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            dark += qGray(image.pixel(x, y)) < 128 ? 1 : 0;
    return dark;
}

} // namespace

TEST(LabelPlacesTest, LieDeepestInTheLargestPart) {
    const test::Ring lShape{{0, 0}, {0, 40}, {10, 40}, {10, 10}, {14, 10}, {14, 0}};
    const MapLayer layer = LayerOf(LayerKind::Polygon, {{Square(0, 0, 10), Square(100, 100, 2)},
                                                        {Square(0, 0, 20), Square(2, 8, 11)}, // a hole leaves a frame
                                                        {lShape},
                                                        {},
                                                        {{{1, 1}, {2, 2}}},
                                                        {{{0, 0}, {5, 0}, {9, 0}}}});
    const std::vector<LabelPlace> places = LabelPlaces(layer);
    EXPECT_NEAR(places[0].room, 5, 0.5);
    EXPECT_NEAR(places[0].at.x(), 5, 0.6);
    EXPECT_LT(places[1].at.y(), 8);
    EXPECT_NEAR(places[1].room, 4.4, 0.5);
    EXPECT_EQ(layer.FeatureAt(places[2].at, 0) >= 0, true);
    EXPECT_LT(places[3].room, 0) << "no shape, no label";
    EXPECT_EQ(places[4].at, QPointF(1, 1)) << "too few points for a ring";
    EXPECT_GE(places[5].room, 0) << "a ring without width";
    const MapLayer line = LayerOf(LayerKind::Line, {{{{0, 0}, {1, 1}}, {{5, 5}, {6, 6}, {7, 7}}}});
    EXPECT_EQ(LabelPlaces(line)[0].at, QPointF(6, 6));
}

TEST(LabelPlacesTest, AlwaysInsideAndQuick) {
    for (const char* file : {"USA_Counties.shp", "World.shp"}) {
        const LayerReading reading = ReadLayer(QStringLiteral(TESSARO_INSTALLATION "/Maps/") + QLatin1String(file));
        ASSERT_TRUE(reading.layer);
        const std::clock_t start = std::clock();
        const std::vector<LabelPlace> places = LabelPlaces(*reading.layer);
        EXPECT_LT((std::clock() - start) * 1000 / CLOCKS_PER_SEC, test::TimeBound(150));
        for (std::size_t i = 0; i < places.size(); ++i) {
            const std::vector<int> there = reading.layer->SearchByDistance(places[i].at, 0);
            EXPECT_NE(std::find(there.begin(), there.end(), static_cast<int>(i)), there.end()) << file << i;
        }
    }
}

TEST(LabelPainterTest, LargerAreasComeFirstAndNothingOverlaps) {
    LayerStack stack;
    stack.Add(LayerOf(LayerKind::Polygon, {{Square(40, 50, 5)}, {Square(38, 45, 20)}}), {});
    stack.At(0).symbols.ofFeature = {-1, -1};
    const auto pictureOf = [&](std::vector<QString> texts, bool overlaps, double scale = 1) {
        LayerLabels labels;
        labels.texts = std::move(texts);
        labels.overlaps = overlaps;
        stack.SetLabels(0, labels);
        return MapImage(stack, {0, 0, 100, 100}, {200, 200}, scale);
    };
    const QString wide = QStringLiteral("MMMMMMMM");
    const int second = DarkPixels(pictureOf({{}, wide}, false));
    EXPECT_GT(second, 20);
    EXPECT_EQ(DarkPixels(pictureOf({wide, wide}, false)), second);
    EXPECT_GT(DarkPixels(pictureOf({wide, wide}, true)), second);
    EXPECT_GT(DarkPixels(pictureOf({{}, wide}, false, 3)), 5 * second) << "letters grow with the picture";
    EXPECT_EQ(DarkPixels(pictureOf({}, false)), 0);
    EXPECT_EQ(DarkPixels(pictureOf({wide}, true)) > 0, true) << "fewer texts than features";
}

TEST(LabelPainterTest, LabelsGiveWayToThoseOfLayersAbove) {
    LayerStack stack;
    const auto pictureOf = [&](bool lowerOverlaps, bool upperOn) {
        stack.Clear();
        for (const double size : {40.0, 4.0}) {
            stack.Add(LayerOf(LayerKind::Polygon, {{Square(50 - size / 2, 50 - size / 2, size)}}), {});
            stack.At(stack.Count() - 1).symbols.ofFeature = {-1};
        }
        LayerLabels labels;
        labels.texts = {QStringLiteral("MMMM")};
        labels.color = Qt::red;
        labels.overlaps = lowerOverlaps;
        stack.SetLabels(0, labels);
        labels.color = Qt::blue;
        labels.on = upperOn;
        stack.SetLabels(1, labels);
        return MapImage(stack, {0, 0, 100, 100}, {200, 200}, 1);
    };
    const auto count = [](const QImage& image, auto pick) {
        int found = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                found += pick(image.pixelColor(x, y)) ? 1 : 0;
        return found;
    };
    const auto red = [](const QColor& color) { return color.blue() < 100; };
    const auto blue = [](const QColor& color) { return color.red() < 100; };
    EXPECT_EQ(count(pictureOf(false, true), red), 0);
    EXPECT_GT(count(pictureOf(false, true), blue), 20);
    EXPECT_GT(count(pictureOf(false, false), red), 20);
}

TEST(LabelPainterTest, LabelsOfPointsStandAboveTheirMarkers) {
    LayerStack stack;
    stack.Add(LayerOf(LayerKind::Point, {{{{50, 50}}}}), {});
    stack.At(0).symbols.symbols[0].color = Qt::black;
    LayerLabels labels;
    labels.texts = {QStringLiteral("MMMM")};
    labels.color = Qt::red;
    stack.SetLabels(0, labels);
    for (const double size : {5.0, 60.0}) {
        stack.At(0).symbols.symbols[0].markerSize = size;
        const QImage image = MapImage(stack, {0, 0, 100, 100}, {200, 200}, 1);
        int lowest = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                if (image.pixelColor(x, y).red() > image.pixelColor(x, y).blue() + 100) lowest = y;
        EXPECT_GT(lowest, 100 - size / 2 - 12) << size;
        EXPECT_LE(lowest, 100 - size / 2) << size;
    }
}

TEST(LabelPainterTest, TextsMeanNothingButThemselves) {
    LayerStack stack;
    stack.Add(LayerOf(LayerKind::Polygon, {{Square(0, 0, 100)}}), {});
    stack.At(0).symbols.ofFeature = {-1};
    const auto pixels = [&](const QString& text) {
        LayerLabels labels;
        labels.texts = {text};
        stack.SetLabels(0, labels);
        return DarkPixels(MapImage(stack, {0, 0, 100, 100}, {300, 100}, 1));
    };
    EXPECT_GT(pixels(QStringLiteral("<b>x</b>")), 3 * pixels(QStringLiteral("x"))) << "no markup";
    EXPECT_EQ(pixels(QStringLiteral("MM\nMM")), pixels(QStringLiteral("MM MM"))) << "one line";
    EXPECT_GT(pixels(QStringLiteral("القاهرة")), 10);
}

TEST(LabelPainterTest, ChangedTextsAndFontsAreDrawnAnew) {
    LayerStack stack;
    stack.Add(LayerOf(LayerKind::Polygon, {{Square(0, 0, 100)}}), {});
    stack.At(0).symbols.ofFeature = {-1};
    LayerLabels labels;
    labels.texts = {QStringLiteral("MM")};
    stack.SetLabels(0, labels);
    const auto pixels = [&](double scale) { return DarkPixels(MapImage(stack, {0, 0, 100, 100}, {300, 100}, scale)); };
    const int two = pixels(1);
    EXPECT_GT(pixels(3), 5 * two);
    EXPECT_EQ(pixels(1), two) << "after a picture for print";
    stack.At(0).labels.texts[0] = QStringLiteral("MMMM");
    EXPECT_GT(pixels(1), two * 3 / 2);
    stack.At(0).labels.font.setPointSize(30);
    EXPECT_GT(pixels(1), two * 4);
}

} // namespace tessaro
