#include "layers/OutlinePicture.h"

#include <cmath>
#include <gtest/gtest.h>

namespace tessaro {

namespace {

constexpr QRect kArea(10, 20, 100, 80);

/// The sum of all pixels' opacity: how much area is covered.
double Covered(const OutlinePicture& picture) {
    double sum = 0;
    for (int y = 0; y < picture.Image().height(); ++y)
        for (int x = 0; x < picture.Image().width(); ++x)
            sum += picture.Image().pixelColor(x, y).alphaF();
    return sum;
}

OutlinePicture Drawn(const std::vector<QPointF>& ring, double width, const QColor& color = Qt::red, int times = 1) {
    OutlinePicture picture(kArea, color, width);
    for (int i = 0; i < times; ++i)
        picture.AddRing(ring.data(), ring.data() + ring.size());
    return picture;
}

} // namespace

TEST(OutlinePictureTest, LinesAreAsWideAsAsked) {
    // There and back: a line is a ring of two points.
    const QPointF start(20.5, 30.5);
    for (const QPointF& end : {QPointF(80.5, 30.5), QPointF(20.5, 90.5), QPointF(70.5, 80.5), QPointF(80.5, 47.5),
                               QPointF(33.5, 90.5), QPointF(60.5, 25.5)})
        for (const double width : {0.5, 1.0, 1.5, 2.0, 3.0}) {
            const double length = std::hypot(end.x() - start.x(), end.y() - start.y()) + 1; // half a pixel at both ends
            const double covered = Covered(Drawn({start, end}, width));
            EXPECT_NEAR(covered, length * width, 0.03 * length * width + width) << end.x() << " " << width;
        }
}

TEST(OutlinePictureTest, OneLineOverAnotherLooksLikeOne) {
    const std::vector<QPointF> ring{{20.5, 30.5}, {80.5, 47.5}, {40.5, 90.5}};
    EXPECT_EQ(Drawn(ring, 0.5, QColor(10, 20, 30, 200), 3).Image(), Drawn(ring, 0.5, QColor(10, 20, 30, 200)).Image());
}

TEST(OutlinePictureTest, DrawsInTheAreaOnly) {
    const QImage image = Drawn({{10.5, 20.5}, {109.5, 20.5}, {109.5, 99.5}, {10.5, 99.5}}, 1, QColor(1, 2, 3)).Image();
    EXPECT_EQ(image.size(), kArea.size());
    for (const QPoint corner : {QPoint(0, 0), QPoint(99, 0), QPoint(99, 79), QPoint(0, 79)})
        EXPECT_EQ(image.pixelColor(corner), QColor(1, 2, 3));
    EXPECT_EQ(image.pixelColor(50, 40).alpha(), 0);
    // Lines that begin and end far outside are seen where they cross.
    const QImage crossed = Drawn({{-7999.5, 60.5}, {9000.5, 60.5}, {60.5, -7999.5}}, 1).Image();
    EXPECT_EQ(crossed.pixelColor(50, 40), QColor(Qt::red));
    for (const std::vector<QPointF>& ring : {std::vector<QPointF>{}, {{50.5, 50.5}}, {{0.5, 0.5}, {5.5, 9000.5}}})
        for (const double width : {0.0, 1.0, 3.0})
            EXPECT_EQ(Covered(Drawn(ring, width)), 0);
    OutlinePicture nothing(QRect(), Qt::red, 1);
    nothing.AddRing(nullptr, nullptr);
    EXPECT_TRUE(nothing.Image().isNull());
}

} // namespace tessaro
