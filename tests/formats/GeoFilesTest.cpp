#include "formats/GeoTable.h"
#include "formats/ReadRows.h"
#include "platform/Files.h"
#include "support/ShapelibFiles.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <gmock/gmock.h>

namespace tessaro::test {
namespace {

using testing::ElementsAre;

/// A ring around a square; clockwise, or else as a hole.
std::vector<QPointF> Square(double left, double bottom, double size, bool isHole = false) {
    std::vector<QPointF> ring{
        {left, bottom}, {left, bottom + size}, {left + size, bottom + size}, {left + size, bottom}, {left, bottom}};
    if (isHole) std::ranges::reverse(ring);
    return ring;
}

class GeoFilesTest : public FilesTest {
  protected:
    [[nodiscard]] ValueTable Table() {
        static const std::vector<ValueRow> rows{
            {"2001", "AAA", "Land \"A\"", "Pop", "Number", "Total", "Census", "1.50", "Estimate"},
            {"2002", "AAA", "Land \"A\"", "Pop", "Number", "Total", "Census", "2", {}},
            {"2002", "BBB", "Île", "Pop", "Number", "Total", "Census", "few", {}},
            {"2002", "BBB", "Île", "Pop", "Number", "Total", "Census", "some", {}}};
        return {static_cast<int>(rows.size()), [](int row) { return rows[static_cast<std::size_t>(row)]; },
                [this](const ValueLosses& told) { losses = told; },
                [](const QString& id) {
                    return id == QLatin1String("AAA")
                               ? AreaRings{Square(2, 2, 1, true), Square(0, 0, 10), Square(20, 0, 5)}
                               : AreaRings();
                }};
    }
    ValueLosses losses;
};

TEST_F(GeoFilesTest, AFeatureHasTheOutlineOfItsAreaAndItsValues) {
    const QString file = Path("Values.geojson");
    ASSERT_TRUE(SaveGeoJson(file, Table()));
    EXPECT_EQ(losses.doubles, 1);
    EXPECT_EQ(losses.withoutShape, 1);
    const QJsonObject set = QJsonDocument::fromJson(ReadWholeFile(file).value_or(QByteArray())).object();
    const QJsonArray features = set.value("features").toArray();
    ASSERT_EQ(features.size(), 2);
    const QJsonObject values = features[0].toObject().value("properties").toObject();
    EXPECT_EQ(values.value("area_name").toString(), "Land \"A\"");
    EXPECT_EQ(values.value("Pop; Number; Total; Census; 2001").toDouble(), 1.5);
    const QJsonArray polygons = features[0].toObject().value("geometry").toObject().value("coordinates").toArray();
    ASSERT_EQ(polygons.size(), 2);
    EXPECT_EQ(polygons[0].toArray().size(), 2) << "the hole is with the land around it";
    EXPECT_EQ(polygons[0].toArray()[0].toArray()[1].toArray(), (QJsonArray{10, 0})) << "land runs anticlockwise";
    EXPECT_TRUE(features[1].toObject().value("geometry").isNull());
    EXPECT_EQ(features[1].toObject().value("properties").toObject().value("Pop; Number; Total; Census; 2002"), "some");
    EXPECT_TRUE(
        ReadWholeFile(Path("Values.notes.csv")).value_or(QByteArray()).contains("1.50,Number,Total,Census,Estimate"));
}

TEST_F(GeoFilesTest, AShapefileIsReadByOthers) {
    ASSERT_TRUE(SaveShapefile(Path("Values.shp"), Table()));
    const Shapes shapes = OpenShapes(Path("Values"));
    int count = 0;
    SHPGetInfo(shapes.get(), &count, nullptr, nullptr, nullptr);
    ASSERT_EQ(count, 2);
    EXPECT_EQ(Shape(SHPReadObject(shapes.get(), 0))->nParts, 3);
    EXPECT_EQ(Shape(SHPReadObject(shapes.get(), 1))->nSHPType, SHPT_NULL);
    const DBFHandle table = DBFOpen(Path("Values").toUtf8().constData(), "rb");
    ASSERT_NE(table, nullptr);
    EXPECT_EQ(DBFGetFieldIndex(table, "V2"), 3);
    EXPECT_EQ(DBFReadDoubleAttribute(table, 0, 2), 1.5);
    EXPECT_TRUE(DBFIsAttributeNULL(table, 1, 2));
    EXPECT_STREQ(DBFReadStringAttribute(table, 1, 3), "some");
    EXPECT_STREQ(DBFReadStringAttribute(table, 1, 1), "Île");
    DBFClose(table);
    EXPECT_TRUE(
        ReadWholeFile(Path("Values.columns.csv")).value_or(QByteArray()).contains("V2,Pop,Number,Total,Census,2002"));
    EXPECT_FALSE(SaveShapefile(QStringLiteral("/proc/Values.shp"), Table()));
}

TEST_F(GeoFilesTest, MoreColumnsThanATableHasAreTold) {
    const ValueTable table{300,
                           [](int row) -> std::optional<ValueRow> {
                               return ValueRow{QString::number(1700 + row), "AAA", "A", "P", "N", "T", "S", "1", {}};
                           },
                           [this](const ValueLosses& told) {
                               losses = told;
                               throw 1;
                           }};
    EXPECT_THROW(static_cast<void>(SaveShapefile(Path("Many.shp"), table)), int);
    EXPECT_EQ(losses.columns, 47);
    EXPECT_FALSE(ReadWholeFile(Path("Many.shp")));
}

} // namespace
} // namespace tessaro::test
