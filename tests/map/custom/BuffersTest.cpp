#include "map/custom/Buffers.h"

#include "layers/LayerReader.h"
#include "map/custom/CustomTest.h"
#include "session/Log.h"
#include "support/FullDisk.h"

#include <QFile>
#include <QtEndian>

#include <cmath>

namespace tessaro::test {

namespace {

class BuffersTest : public CustomTest {
  protected:
    void SetUp() override {
        CustomTest::SetUp();
        points_ = MakeLayer(QStringLiteral("Cities"), SHPT_POINT, {"ID_", "Name1_"},
                            {{"1", "Zürich"}, {"2", "القاهرة"}, {"3", "c"}});
    }
    [[nodiscard]] QString Base() const { return maps_ + QStringLiteral("/Buffers/Buffer_Cities"); }
    [[nodiscard]] QStringList Files() const {
        return QDir(maps_ + QStringLiteral("/Buffers")).entryList(QDir::Files, QDir::Name);
    }

    QString points_;
};

} // namespace

TEST_F(BuffersTest, ChecksTheRadius) {
    SysNumFormat = false;
    const struct {
        const char* typed;
        double radius;
        const char* message;
    } cases[] = {{"5", 5, nullptr},   {"1000", 1000, nullptr}, {"12.5", 12.5, nullptr}, {" 50 ", 50, nullptr},
                 {"4.9", 5, "229"},   {"-7", 5, "229"},        {"1000.1", 1000, "229"}, {"1e300", 1000, "229"},
                 {"fifty", 0, "228"}, {"", 0, "228"},          {"nan", 0, "228"},       {"5 km", 0, "228"}};
    for (const auto& [typed, radius, message] : cases) {
        const TypedRadius read = CheckRadius(QLatin1String(typed));
        EXPECT_EQ(read.radius, static_cast<float>(radius)) << typed;
        EXPECT_STREQ(read.message, message) << typed;
    }
}

TEST_F(BuffersTest, WritesACircleAroundEachPoint) {
    constexpr float kRadius = 12.3F;
    const BufferFile made = MakeBuffers(points_, QStringLiteral("Cities"), kRadius);
    ASSERT_EQ(made.path, Base() + QStringLiteral(".shp")) << made.reason.toStdString();
    const Shapes shapes = OpenShapes(Base());
    ASSERT_TRUE(shapes);
    int count = 0;
    int type = 0;
    double least[4];
    double most[4];
    SHPGetInfo(shapes.get(), &count, &type, least, most);
    EXPECT_EQ(count, 3);
    EXPECT_EQ(type, SHPT_POLYGON);
    const double reach = double(kRadius) * 0.005;
    EXPECT_DOUBLE_EQ(least[0], 0 + reach * std::cos(180 * 3.14285714285714 / 180));
    EXPECT_DOUBLE_EQ(most[0], 20 + reach);
    for (int record = 0; record < count; ++record) {
        const Rings rings = RingsOf(shapes.get(), record);
        ASSERT_EQ(rings.size(), 1U);
        ASSERT_EQ(rings[0].size(), 37U);
        for (int i = 0; i < 37; ++i) {
            const double angle = 10 * i * 3.14285714285714 / 180;
            EXPECT_DOUBLE_EQ(rings[0][std::size_t(i)].first, kRadius * std::cos(angle) * 0.005 + 10 * record);
            EXPECT_DOUBLE_EQ(rings[0][std::size_t(i)].second, record - kRadius * std::sin(angle) * 0.005);
        }
        EXPECT_GT(std::hypot(rings[0][0].first - rings[0][36].first, rings[0][0].second - rings[0][36].second), 1e-5)
            << "with 22/7 the circle stays open";
    }
    EXPECT_EQ(ReadWholeFile(Base() + QStringLiteral(".dbf")), ReadWholeFile(maps_ + QStringLiteral("/Cities.dbf")));
    const LayerReading layer = ReadLayer(made.path);
    ASSERT_TRUE(layer.layer);
    EXPECT_EQ(layer.layer->Text(1, 1), QStringLiteral("القاهرة")) << "the code page goes with the table";
    EXPECT_EQ(Files().join(QLatin1Char(' ')),
              QStringLiteral("Buffer_Cities.cpg Buffer_Cities.dbf Buffer_Cities.shp Buffer_Cities.shx"));
}

TEST_F(BuffersTest, ReplacesFormerOnes) {
    ASSERT_FALSE(MakeBuffers(points_, QStringLiteral("Cities"), 5).path.isEmpty());
    MakeLayer(QStringLiteral("Cities"), SHPT_POINT, {"ID_"}, {{"1"}});
    QFile::remove(maps_ + QStringLiteral("/Cities.cpg"));
    ASSERT_FALSE(MakeBuffers(points_, QStringLiteral("Cities"), 1000).path.isEmpty());
    int count = 0;
    SHPGetInfo(OpenShapes(Base()).get(), &count, nullptr, nullptr, nullptr);
    EXPECT_EQ(count, 1);
    EXPECT_FALSE(Files().contains(QStringLiteral("Buffer_Cities.cpg"))) << "a code page of another table";
}

TEST_F(BuffersTest, LieInTheUsersFolderWhereTheInstallationCantBeWritten) {
    const ReadOnlyFolder locked(maps_);
    if (QFileInfo(maps_).isWritable()) GTEST_SKIP() << "root may write everywhere";
    const BufferFile made = MakeBuffers(points_, QStringLiteral("Cities"), 5);
    EXPECT_EQ(made.path, CacheFolder + QStringLiteral("/Maps/Buffers/Buffer_Cities.shp"));
    EXPECT_TRUE(ReadLayer(made.path).layer);
}

TEST_F(BuffersTest, OtherShapesGiveHeadersOnly) {
    const QString squares = MakeLayer(QStringLiteral("Squares"), SHPT_POLYGON, {"ID_"}, {{"1"}});
    const BufferFile made = MakeBuffers(squares, QStringLiteral("Squares"), 10);
    ASSERT_FALSE(made.path.isEmpty());
    EXPECT_EQ(QFileInfo(made.path).size(), 100);
    const LayerReading layer = ReadLayer(made.path);
    ASSERT_TRUE(layer.layer);
    EXPECT_TRUE(layer.layer->features.empty());
}

TEST_F(BuffersTest, ANullShapeEndsTheWork) {
    WriteShapes(maps_ + QStringLiteral("/Cities"), SHPT_POINT, {{{{1, 2}}}, {}, {{{3, 4}}}});
    const BufferFile made = MakeBuffers(points_, QStringLiteral("Cities"), 10);
    EXPECT_TRUE(made.path.isEmpty());
    EXPECT_TRUE(made.reason.contains(QStringLiteral("A shape type does not match main header type.")));
    int count = 0;
    SHPGetInfo(OpenShapes(Base()).get(), &count, nullptr, nullptr, nullptr);
    EXPECT_EQ(count, 1) << "the circles before it stay";
    QFile log(LogFile());
    ASSERT_TRUE(log.open(QIODevice::ReadOnly));
    EXPECT_TRUE(log.readAll().contains("A shape type does not match"));
}

TEST_F(BuffersTest, FailuresLeaveTheFormerOnes) {
    EXPECT_TRUE(MakeBuffers(maps_ + QStringLiteral("/gone.shp"), QStringLiteral("gone"), 10).path.isEmpty());
    EXPECT_TRUE(Files().isEmpty());
    ASSERT_FALSE(MakeBuffers(points_, QStringLiteral("Cities"), 5).path.isEmpty());
    const auto before = ReadWholeFile(Base() + QStringLiteral(".shp"));
    for (const rlim_t bytes : {50, 400, 1000}) {
        BufferFile made;
        {
            const FullDisk full(bytes);
            made = MakeBuffers(points_, QStringLiteral("Cities"), 900);
        }
        EXPECT_TRUE(made.path.isEmpty()) << bytes;
        EXPECT_FALSE(made.reason.isEmpty()) << bytes;
        EXPECT_EQ(ReadWholeFile(Base() + QStringLiteral(".shp")), before) << bytes;
        EXPECT_EQ(Files().filter(QStringLiteral("~")).size(), 0) << bytes;
    }
}

} // namespace tessaro::test
