#include "layers/MapPicture.h"

#include "layers/HandMadeLayer.h"
#include "layers/Hatching.h"
#include "layers/MapPictureFile.h"
#include "layers/RingGroups.h"
#include "platform/Files.h"

#include <QFile>
#include <QPainter>
#include <QProcess>
#include <QSvgRenderer>
#include <QTemporaryDir>

#include <algorithm>
#include <gtest/gtest.h>

namespace tessaro {

namespace {

using test::LayerOf;
using test::Square;

/// A frame around a hole, filled with a pattern, and its name.
LayerStack FrameWith(FillPattern pattern) {
    LayerStack stack;
    stack.Add(LayerOf(LayerKind::Polygon, {{Square(0, 0, 100), Square(40, 40, 20)}}), {});
    stack.At(0).symbols.symbols[0].color = Qt::red;
    stack.At(0).symbols.symbols[0].pattern = pattern;
    stack.At(0).symbols.symbols[0].outlineWidth = 0;
    return stack;
}

/// Red where a picture is covered: the mean over a part of it, from 0 to 1.
double Covered(const QImage& image, const QRect& place) {
    double covered = 0;
    for (int y = place.top(); y <= place.bottom(); ++y)
        for (int x = place.left(); x <= place.right(); ++x)
            covered += 1 - image.pixelColor(x, y).greenF();
    return covered / (place.width() * place.height());
}

QImage ReadSvg(const QString& path) {
    QSvgRenderer svg(path);
    QImage image(400, 400, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    svg.render(&painter);
    return image;
}

QImage ReadPdf(const QString& path) {
    QProcess::execute(QStringLiteral("pdftoppm"), {QStringLiteral("-png"), QStringLiteral("-r"), QStringLiteral("192"),
                                                   QStringLiteral("-singlefile"), path, path});
    return QImage(path + QStringLiteral(".png"));
}

} // namespace

// 200 pixels on the screen, twice as many in each picture.
TEST(MapPictureTest, EveryKindShowsTheSame) {
    const std::pair<FillPattern, double> shares[] = {
        {FillPattern::Solid, 1},        {FillPattern::Transparent, 0},        {FillPattern::Horizontal, 0.125},
        {FillPattern::Vertical, 0.125}, {FillPattern::UpwardDiagonal, 0.125}, {FillPattern::DownwardDiagonal, 0.125},
        {FillPattern::Cross, 0.234},    {FillPattern::DiagonalCross, 0.25},   {FillPattern::LightGray, 0.125},
        {FillPattern::Gray, 0.5},       {FillPattern::DarkGray, 0.875}};
    const QTemporaryDir folder;
    for (const auto& [pattern, share] : shares)
        for (const char* const kind : {"png", "svg", "pdf"}) {
            const QString path = folder.filePath(QStringLiteral("map.") + QLatin1String(kind));
            ASSERT_TRUE(SaveMapPicture(path, FrameWith(pattern), {0, 0, 100, 100}, {200, 200}, 2));
            const QImage image = path.endsWith(QLatin1String("svg"))   ? ReadSvg(path)
                                 : path.endsWith(QLatin1String("pdf")) ? ReadPdf(path)
                                                                       : QImage(path);
            ASSERT_EQ(image.size(), QSize(400, 400)) << kind;
            EXPECT_NEAR(Covered(image, {16, 16, 128, 368}), share, 0.05) << kind << static_cast<int>(pattern);
            EXPECT_LT(Covered(image, {170, 170, 60, 60}), 0.01) << kind << " the hole " << static_cast<int>(pattern);
        }
}

TEST(MapPictureTest, WhatCannotBeWrittenIsTold) {
    const QTemporaryDir folder;
    const LayerStack stack = FrameWith(FillPattern::Solid);
    EXPECT_FALSE(SaveMapPicture(folder.filePath(QStringLiteral("none/map.svg")), stack, {}, {100, 100}, 1));
    EXPECT_FALSE(SaveMapPicture(folder.filePath(QStringLiteral("map.unknown")), stack, {}, {100, 100}, 1));
    EXPECT_FALSE(SaveMapPicture(folder.filePath(QStringLiteral("map.png")), stack, {}, {}, 1));
    EXPECT_FALSE(SaveMapPicture(folder.filePath(QStringLiteral("map.png")), stack, {}, {100000, 100000}, 9));
    EXPECT_TRUE(SaveMapPicture(folder.filePath(QStringLiteral("empty.pdf")), LayerStack(), {}, {100, 100}, 1));
}

TEST(MapPictureTest, LabelsWithARimAreOneTextInAPictureOfLines) {
    const QTemporaryDir folder;
    LayerStack stack = FrameWith(FillPattern::Solid);
    LayerLabels labels;
    labels.texts = {QStringLiteral("Genève")};
    labels.halo = Qt::white;
    stack.SetLabels(0, labels);
    const QString file = folder.filePath(QStringLiteral("map.svg"));
    ASSERT_TRUE(SaveMapPicture(file, stack, {}, {300, 300}, 1));
    const auto svg = ReadWholeFile(file);
    ASSERT_TRUE(svg);
    EXPECT_EQ(svg->count("<text"), 1);
    EXPECT_TRUE(svg->contains("Genève"));
}

TEST(MapPictureTest, LayersAreToldInOrderAndLabelsComeLast) {
    LayerStack stack = FrameWith(FillPattern::Solid);
    stack.Add(LayerOf(LayerKind::Polygon, {{Square(0, 0, 100)}}), {});
    stack.Add(LayerOf(LayerKind::Point, {{{{5, 5}}}}), {});
    stack.At(2).visible = false;
    LayerLabels labels;
    labels.texts = {QStringLiteral("MMMM")};
    labels.color = Qt::blue;
    stack.SetLabels(0, labels);
    QImage image(200, 200, QImage::Format_RGB32);
    std::vector<int> drawn;
    QPainter painter(&image);
    PaintMap(painter, stack, ViewOf(stack, {0, 0, 100, 100}, image.size()), 1,
             [&](int each) { drawn.push_back(each); });
    painter.end();
    EXPECT_EQ(drawn, (std::vector<int>{0, 1}));
    int blue = 0;
    for (int y = 0; y < 200; ++y)
        for (int x = 0; x < 200; ++x)
            blue += image.pixelColor(x, y).blue() > image.pixelColor(x, y).red() + 50 ? 1 : 0;
    EXPECT_GT(blue, 10) << "the upper layer doesn't cover the label of the lower";
}

TEST(RingGroupsTest, HolesAreWithWhatTheyLieIn) {
    const auto square = [](double left, double top, double side) { return QRectF(left, top, side, side); };
    const auto groups = RingGroups(
        {square(0, 0, 10), square(50, 0, 10), square(2, 2, 5), square(53, 3, 2), square(10, 10, 1), square(30, 50, 9)});
    std::vector<std::vector<std::size_t>> sorted;
    for (auto group : groups) {
        std::sort(group.begin(), group.end());
        sorted.push_back(group);
    }
    std::sort(sorted.begin(), sorted.end());
    EXPECT_EQ(sorted, (std::vector<std::vector<std::size_t>>{{0, 2, 4}, {1, 3}, {5}}));
    EXPECT_TRUE(RingGroups({}).empty());
}

TEST(HatchingTest, LinesStayWithinTheRings) {
    const QPolygonF ring{{{0, 0}, {100, 0}, {100, 100}, {0, 100}}};
    const QPolygonF hole{{{40, 0}, {60, 0}, {60, 100}, {40, 100}}};
    const auto lines = HatchLines(FillPattern::Horizontal, {ring, hole}, 10);
    EXPECT_EQ(lines.size(), 20U);
    for (const QLineF& line : lines)
        EXPECT_NEAR(line.length(), 40, 1e-9);
    EXPECT_TRUE(HatchLines(FillPattern::Gray, {ring}, 10).empty());
    EXPECT_TRUE(HatchLines(FillPattern::Cross, {{}, {{{1, 1}}}}, 10).empty());
    EXPECT_TRUE(HatchLines(FillPattern::Vertical, {{{{0, 0}, {1e15, 0}, {0, 1}}}}, 10).size() < 10);
}

} // namespace tessaro
