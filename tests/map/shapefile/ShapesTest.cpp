#include "map/shapefile/Shapes.h"

#include "map/shapefile/ShapefileError.h"
#include "support/TestSession.h"

#include <array>

namespace tessaro {

namespace {

using Box = std::array<double, 4>; ///< left, top, right, bottom

template <class Kind> Box BoxOf(const Kind& shape) {
    return {shape.Left(), shape.Top(), shape.Right(), shape.Bottom()};
}

std::shared_ptr<CPart> PartOf(const std::vector<std::pair<double, double>>& points) {
    auto part = std::make_shared<CPart>();
    for (const auto& [x, y] : points)
        part->Add(std::make_shared<CPoint>(x, y));
    return part;
}

class ShapesTest : public test::SessionTest {};

} // namespace

TEST(PartTest, TheBoxGrowsWithEachPoint) {
    const struct {
        const char* what;
        std::vector<std::pair<double, double>> points;
        Box box;
    } cases[] = {
        {"one point away from the origin", {{5, 7}}, {5, 7, 5, 7}},
        {"four corners", {{0, 0}, {0, 4}, {3, 4}, {3, 0}}, {0, 4, 3, 0}},
        {"below zero", {{-1, -1}, {-5, -9}}, {-1 - 4, -1, -1, -9}},
        {"back inside", {{0, 0}, {10, 10}, {5, 5}}, {0, 10, 10, 0}},
    };
    for (const auto& c : cases)
        EXPECT_EQ(BoxOf(*PartOf(c.points)), c.box) << c.what;
}

TEST(PartTest, AfterARemovalTheBoxIsTheLastPoint) {
    const auto part = PartOf({{0, 0}, {9, 1}, {4, 5}});
    part->Remove(1);
    EXPECT_EQ(part->Count(), 2);
    EXPECT_EQ(BoxOf(*part), (Box{4, 5, 4, 5}));
    part->Remove(2);
    EXPECT_EQ(BoxOf(*part), (Box{9, 1, 9, 1}));
    part->Remove(1);
    EXPECT_EQ(part->Count(), 0);
    EXPECT_EQ(BoxOf(*part), (Box{9, 1, 9, 1}));
}

TEST(PolygonTest, TheBoxHoldsItsPartsAndStaysAfterARemoval) {
    CPolygon polygon;
    polygon.Add(PartOf({{5, 5}, {6, 7}}));
    EXPECT_EQ(BoxOf(polygon), (Box{5, 7, 6, 5}));
    polygon.Add(PartOf({{-1, 6}, {8, 20}}));
    EXPECT_EQ(BoxOf(polygon), (Box{-1, 20, 8, 5}));
    polygon.Remove(2);
    EXPECT_EQ(polygon.Count(), 1);
    EXPECT_EQ(BoxOf(polygon), (Box{-1, 20, 8, 5}));
}

TEST(PolygonTest, HoldsTheObjectsThemselves) {
    const auto part = PartOf({{1, 1}});
    CPolygon polygon;
    polygon.Add(part);
    polygon.Item(1)->Item(1)->X(42);
    EXPECT_EQ((*part->begin())->X(), 42);
}

TEST(CollectionTest, RefusesOtherObjectsAndIndexes) {
    CPart part;
    CPolygon polygon;
    part.Add(std::make_shared<CPoint>());
    polygon.Add(PartOf({{0, 0}}));
    const auto point = std::make_shared<CPoint>();
    const struct {
        std::function<void()> call;
        unsigned number;
        const char* text;
        const char* source;
    } cases[] = {
        {[&] { part.Add(PartOf({})); }, 0x8004020F, "CPart can only accept objects of type CPoint", "CPart::Add"},
        {[&] { part.Add(nullptr); }, 0x8004020F, "CPart can only accept objects of type CPoint", "CPart::Add"},
        {[&] { polygon.Add(point); }, 0x8004020F, "CPolygon Add can only accept objects of type CPart",
         "CPolygon::Add"},
        {[&] { part.Remove(0); }, 9, "Subscript out of range", "CPart::Remove"},
        {[&] { part.Remove(2); }, 9, "Subscript out of range", "CPart::Remove"},
        {[&] { polygon.Remove(-1); }, 9, "Subscript out of range", "C_Polygon::Remove"},
        {[&] { std::ignore = part.Item(2); }, 9, "Subscript out of range", "CPart::Item"},
        {[&] { std::ignore = polygon.Item(0); }, 9, "Subscript out of range", "CPolygon::Item"},
    };
    for (const auto& c : cases) {
        try {
            c.call();
            ADD_FAILURE() << c.source;
        } catch (const ShapefileError& error) {
            EXPECT_EQ(error.number, c.number);
            EXPECT_EQ(error.text.toStdString(), c.text);
            EXPECT_EQ(error.source.toStdString(), c.source);
        }
    }
    EXPECT_EQ(part.Count(), 1);
    EXPECT_EQ(polygon.Count(), 1);
}

TEST(RectTest, TakesSidesInItsTwoOrders) {
    CRect rect;
    rect.MakeXY(1, 2, 3, 4);
    EXPECT_EQ(BoxOf(rect), (Box{1, 2, 3, 4}));
    rect.Make(CPoint(5, 6), CPoint(7, 8));
    EXPECT_EQ(BoxOf(rect), (Box{5, 6, 7, 8}));
    rect.MakeEmpty();
    EXPECT_EQ(BoxOf(rect), Box{});
    EXPECT_FALSE(rect.IsNull());
    rect.MakeNull(true);
    EXPECT_TRUE(rect.IsNull());
}

TEST_F(ShapesTest, AreaIsNotComputed) {
    EXPECT_EQ(CPolygon().Area(), 0);
    EXPECT_EQ(messages, QStringList{QStringLiteral("NOT IMPLEMENTED")});
}

} // namespace tessaro
