#include "layers/MapCanvas.h"

#include "layers/HandMadeLayer.h"

#include <QSignalSpy>
#include <QTest>
#include <QWheelEvent>

#include <gtest/gtest.h>

namespace tessaro {

namespace {

using test::LayerOf;
using test::Square;

/// A square of 100 degrees on a widget of 400 pixels: 4 pixels a degree in both directions at the equator.
class MapCanvasTest : public testing::Test {
  protected:
    MapCanvasTest() {
        map.Layers().Add(LayerOf(LayerKind::Polygon, {{Square(-50, -50, 100)}}), {});
        map.resize(400, 400);
        map.show();
        (void)QTest::qWaitForWindowExposed(&map);
    }
    void Drag(Qt::MouseButton button, QPoint from, QPoint to) {
        QTest::mousePress(&map, button, {}, from);
        QTest::mouseMove(&map, (from + to) / 2);
        QTest::mouseMove(&map, to);
        QTest::mouseRelease(&map, button, {}, to);
    }
    void Wheel(QPoint place, int notches) {
        QWheelEvent event(place, map.mapToGlobal(place), {}, {0, 120 * notches}, {}, {}, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&map, &event);
    }
    static void ExpectBox(const MapBox& box, double left, double bottom, double right, double top) {
        EXPECT_NEAR(box.left, left, 0.01);
        EXPECT_NEAR(box.bottom, bottom, 0.01);
        EXPECT_NEAR(box.right, right, 0.01);
        EXPECT_NEAR(box.top, top, 0.01);
    }
    MapCanvas map;
};

} // namespace

TEST_F(MapCanvasTest, ToolsDoWhatTheySay) {
    const QSignalSpy used(&map, &MapCanvas::ToolUsed);
    const QSignalSpy clicked(&map, &MapCanvas::Clicked);
    ExpectBox(map.Extent(), -50, -50, 50, 50);
    map.SetTool(MapTool::ZoomIn);
    Drag(Qt::LeftButton, {200, 0}, {400, 200});
    ExpectBox(map.Extent(), 0, 0, 50, 50);
    QTest::mouseClick(&map, Qt::LeftButton, {}, {200, 200}); // an empty rectangle
    ExpectBox(map.Extent(), 0, 0, 50, 50);
    EXPECT_EQ(used.count(), 1);
    map.SetTool(MapTool::ZoomOut);
    QTest::mouseClick(&map, Qt::LeftButton, {}, {400, 200});
    ExpectBox(map.Extent(), 0, -25, 100, 75);
    map.SetTool(MapTool::Pan);
    Drag(Qt::LeftButton, {200, 200}, {160, 240});
    ExpectBox(map.Extent(), 10, -15, 110, 85);
    EXPECT_EQ(used.count(), 3);
    EXPECT_EQ(clicked.count(), 0);
    map.ShowFullExtent();
    ExpectBox(map.Extent(), -50, -50, 50, 50);
}

TEST_F(MapCanvasTest, WheelDragAndClick) {
    const QSignalSpy clicked(&map, &MapCanvas::Clicked);
    const QPointF held = map.ToMapPoint({300, 100});
    Wheel({300, 100}, 2);
    EXPECT_NEAR(map.Extent().Width(), 64, 0.01);
    EXPECT_NEAR(map.ToMapPoint({300, 100}).x(), held.x(), 1e-6);
    EXPECT_NEAR(map.ToMapPoint({300, 100}).y(), held.y(), 1e-6);
    Wheel({300, 100}, -2);
    ExpectBox(map.Extent(), -50, -50, 50, 50);
    for (int i = 0; i < 200; ++i)
        Wheel({0, 0}, i < 100 ? 9 : -9);
    EXPECT_FALSE(map.Extent().IsEmpty());
    EXPECT_LT(map.Extent().Width(), 1000) << "as far out as makes sense";
    map.ShowFullExtent();
    Drag(Qt::LeftButton, {100, 100}, {140, 100});
    EXPECT_EQ(clicked.count(), 0);
    ExpectBox(map.Extent(), -60, -50, 40, 50);
    map.SetTool(MapTool::ZoomIn);
    Drag(Qt::MiddleButton, {140, 100}, {100, 100});
    ExpectBox(map.Extent(), -50, -50, 50, 50);
    map.SetTool(MapTool::Select);
    QTest::mouseClick(&map, Qt::LeftButton, {}, {200, 100});
    ASSERT_EQ(clicked.count(), 1);
    EXPECT_NEAR(clicked[0][0].toPointF().y(), 25, 0.2);
}

TEST_F(MapCanvasTest, KeysAndEscape) {
    QTest::keyClick(&map, Qt::Key_Right);
    ExpectBox(map.Extent(), -35, -50, 65, 50);
    QTest::keyClick(&map, Qt::Key_Up);
    ExpectBox(map.Extent(), -35, -35, 65, 65);
    QTest::keyClick(&map, Qt::Key_Minus);
    EXPECT_NEAR(map.Extent().Width(), 150, 0.1);
    QTest::keyClick(&map, Qt::Key_Home);
    ExpectBox(map.Extent(), -50, -50, 50, 50);
    map.SetTool(MapTool::ZoomIn);
    QTest::mousePress(&map, Qt::LeftButton, {}, {10, 10});
    QTest::mouseMove(&map, {90, 90});
    QTest::keyClick(&map, Qt::Key_Escape);
    QTest::mouseRelease(&map, Qt::LeftButton, {}, {90, 90});
    ExpectBox(map.Extent(), -50, -50, 50, 50);
    EXPECT_EQ(map.Tool(), MapTool::ZoomIn) << "the first Escape ends the rectangle";
    QTest::keyClick(&map, Qt::Key_Escape);
    EXPECT_EQ(map.Tool(), MapTool::Select);
    QTest::mousePress(&map, Qt::LeftButton, {}, {10, 10});
    QTest::mouseMove(&map, {90, 90});
    QTest::keyClick(&map, Qt::Key_Escape);
    ExpectBox(map.Extent(), -50, -50, 50, 50);
    QTest::mouseRelease(&map, Qt::LeftButton, {}, {90, 90});
}

TEST_F(MapCanvasTest, TellsEachLayerAndPaintsTheRim) {
    map.Layers().Add(LayerOf(LayerKind::Point, {{{{0, 0}}}}), {});
    map.Layers().At(0).symbols.symbols[0].color = Qt::red;
    map.Layers().At(1).visible = false;
    const QSignalSpy drawn(&map, &MapCanvas::AfterLayerDraw);
    map.Refresh();
    EXPECT_EQ(map.grab().toImage().pixelColor(100, 100), QColor(Qt::red));
    ASSERT_EQ(drawn.count(), 1);
    map.Layers().At(1).visible = true;
    map.Refresh();
    (void)map.grab();
    EXPECT_EQ(drawn.count(), 3);
    (void)map.grab();
    EXPECT_EQ(drawn.count(), 3) << "drawn once";
    map.Highlight(0, 0);
    map.Highlight(0, 99);
    map.Highlight(7, 0);
    map.Layers().Clear();
    map.Highlight(0, 0);
    map.Refresh();
    EXPECT_FALSE(map.grab().isNull());
    QTest::keyClick(&map, Qt::Key_Plus);
    Wheel({10, 10}, 1);
    QTest::mouseClick(&map, Qt::LeftButton, {}, {10, 10});
}

} // namespace tessaro
