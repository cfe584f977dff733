#include "layers/LayerReader.h"

#include "TestPlaces.h"
#include "support/ShapelibFiles.h"
#include "support/TimeBound.h"

#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace tessaro {

namespace {

const test::Rings kSquare{{{0, 0}, {0, 10}, {10, 10}, {10, 0}, {0, 0}}, {{4, 4}, {6, 4}, {6, 6}, {4, 6}, {4, 4}}};
const test::Rings kTriangle{{{20, 0}, {20, 5}, {25, 0}, {20, 0}}};

class LayerReaderTest : public testing::Test {
  protected:
    [[nodiscard]] QString Base(const char* name = "layer") const { return folder_.filePath(QLatin1String(name)); }
    [[nodiscard]] LayerReading Read(const char* name = "layer") const {
        return ReadLayer(Base(name) + QStringLiteral(".shp"));
    }
    [[nodiscard]] QByteArray Bytes(const char* ending) const {
        QFile file(Base() + QLatin1String(ending));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    void Write(const char* ending, const QByteArray& bytes) const {
        QFile file(Base() + QLatin1String(ending));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    /// A table of one field "Name" with texts in the bytes of a code page.
    void WriteTable(const char* codePage, const QList<QByteArray>& texts) const {
        std::vector<std::vector<std::string>> rows;
        for (const QByteArray& text : texts)
            rows.push_back({text.toStdString()});
        test::WriteTable(Base(), codePage, {"Name"}, rows);
    }
    void WriteLayer() const {
        test::WriteShapes(Base(), SHPT_POLYGON, {kSquare, {}, kTriangle});
        WriteTable("UTF-8", {"one", "two", "three"});
    }
    QTemporaryDir folder_;
};

} // namespace

TEST_F(LayerReaderTest, ReadsShapesAndTable) {
    WriteLayer();
    const LayerReading reading = Read("LAYER");
    ASSERT_TRUE(reading.layer);
    const MapLayer& layer = *reading.layer;
    EXPECT_TRUE(reading.hasTable);
    EXPECT_EQ(layer.kind, LayerKind::Polygon);
    ASSERT_EQ(layer.features.size(), 3U);
    EXPECT_EQ(layer.features[0].endPart, 2);
    EXPECT_TRUE(layer.features[1].box.IsEmpty());
    EXPECT_EQ(layer.features[2].box, (MapBox{20, 0, 25, 5}));
    EXPECT_EQ(layer.extent, (MapBox{0, 0, 25, 10}));
    EXPECT_EQ(layer.FeatureAt({21, 1}, 0), 2);
    EXPECT_EQ(layer.FeatureAt({5, 5}, 0), -1);
    EXPECT_EQ(layer.damaged, 0);
    EXPECT_EQ(layer.Text(2, layer.NameField()).toStdString(), "three");
    EXPECT_EQ(layer.Text(0, layer.IdField()), QString());
    EXPECT_EQ(layer.Text(7, 0), QString());
}

TEST_F(LayerReaderTest, ReadsEveryKindWithHeightsAndMeasures) {
    const struct {
        int type;
        LayerKind kind;
        test::Rings rings;
    } cases[] = {
        {SHPT_POINT, LayerKind::Point, {{{3, 4}}}},       {SHPT_POINTZ, LayerKind::Point, {{{3, 4}}}},
        {SHPT_POINTM, LayerKind::Point, {{{3, 4}}}},      {SHPT_MULTIPOINT, LayerKind::Point, {{{3, 4}, {5, 6}}}},
        {SHPT_MULTIPOINTZ, LayerKind::Point, {{{3, 4}}}}, {SHPT_ARC, LayerKind::Line, {{{3, 4}, {5, 6}}}},
        {SHPT_ARCM, LayerKind::Line, {{{3, 4}, {5, 6}}}}, {SHPT_ARCZ, LayerKind::Line, {{{3, 4}, {5, 6}}}},
        {SHPT_POLYGONM, LayerKind::Polygon, kSquare},     {SHPT_POLYGONZ, LayerKind::Polygon, kSquare},
    };
    for (const auto& c : cases) {
        test::WriteShapes(Base(), c.type, {c.rings});
        const LayerReading reading = Read();
        ASSERT_TRUE(reading.layer) << c.type;
        EXPECT_FALSE(reading.hasTable);
        EXPECT_EQ(reading.layer->kind, c.kind) << c.type;
        EXPECT_EQ(reading.layer->points.front(), QPointF(c.rings[0][0].first, c.rings[0][0].second)) << c.type;
        EXPECT_EQ(reading.layer->damaged, 0) << c.type;
    }
    test::WriteShapes(Base(), SHPT_MULTIPATCH, {kSquare});
    EXPECT_EQ(Read().fault, LayerFault::UnsupportedKind);
}

TEST_F(LayerReaderTest, NeedsNoIndexAndNoPlainFirstWord) {
    WriteLayer();
    const QByteArray index = Bytes(".shx");
    for (const QByteArray& damaged :
         {QByteArray(), index.left(105), QByteArray(index).replace(100, 4, "\x7f\xff\xff\xff", 4)}) {
        Write(".shx", damaged);
        ASSERT_TRUE(Read().layer);
        EXPECT_EQ(Read().layer->features.size(), 3U);
    }
    QFile::remove(Base() + QStringLiteral(".shx"));
    QByteArray main = Bytes(".shp");
    main.replace(0, 8, QByteArray::fromHex("0000d9f501000000")); // the first word negated, the second 1
    Write(".shp", main);
    ASSERT_TRUE(Read().layer);
    EXPECT_EQ(Read().layer->features.size(), 3U);
    EXPECT_EQ(Read().layer->extent, (MapBox{0, 0, 25, 10}));
}

TEST_F(LayerReaderTest, TextsOfEveryCodePage) {
    const struct {
        const char* page;
        QByteArray bytes;
        const char* text;
    } cases[] = {
        {"UTF-8", "\xC3\xA9t\xC3\xA9", "été"}, {"LDID/87", "\xE9t\xE9", "été"},
        {"LDID/201", "\xCC\xE8\xF0", "Мир"},   {"LDID/1", "\x82t\x82", "été"},
        {"CP1256", "\xE3\xD5\xD1", "مصر"},     {"ANSI 1251", "\xCC\xE8\xF0", "Мир"},
        {"88591", "\xE9t\xE9", "été"},         {"1250", "\xB3\xF3", "łó"},
        {nullptr, "\xC3\xA9t\xC3\xA9", "été"}, {nullptr, "\xE9t\xE9", "été"},
        {"nonsense", "\xE9t\xE9", "été"},      {"OEM 866", "\x8C\xA8\xE0", "Мир"},
        {"LDID/38", "\x8C\xA8\xE0", "Мир"},    {"LDID/77", "\xB1\xB1\xBE\xA9", "北京"},
        {"936", "\xB1\xB1\xBE\xA9", "北京"},   {"LDID/19", "\x93\x8C\x8B\x9E", "東京"},
        {"LDID/124", "\xA1\xC3", "กร"},        {"GB18030", "\xB1\xB1\xBE\xA9", "北京"},
    };
    test::WriteShapes(Base(), SHPT_POLYGON, {kSquare});
    for (const auto& c : cases) {
        QFile::remove(Base() + QStringLiteral(".cpg"));
        WriteTable(c.page, {c.bytes});
        const LayerReading reading = Read();
        ASSERT_TRUE(reading.layer);
        EXPECT_EQ(reading.layer->Text(0, 0).toStdString(), c.text) << (c.page ? c.page : "none");
    }
}

TEST_F(LayerReaderTest, TellsWhyAFileIsNoLayer) {
    EXPECT_EQ(Read("none").fault, LayerFault::Missing);
    EXPECT_EQ(ReadLayer(folder_.path()).fault, LayerFault::Missing);
    Write(".shp", "a text that is no shapefile");
    EXPECT_EQ(Read().fault, LayerFault::NotAShapefile);
    Write(".shp", {});
    EXPECT_EQ(Read().fault, LayerFault::NotAShapefile);
}

// Every prefix and every changed byte of each file gives a reason or a layer with at most its records.
TEST_F(LayerReaderTest, EnduresDamage) {
    WriteLayer();
    for (const char* ending : {".shp", ".shx", ".dbf", ".cpg"}) {
        const QByteArray good = Bytes(ending);
        const auto endure = [&](const QByteArray& bytes, qsizetype place) {
            Write(ending, bytes);
            const LayerReading reading = Read();
            EXPECT_EQ(reading.layer.has_value(), reading.fault == LayerFault::None) << ending << place;
            EXPECT_LE(reading.layer ? reading.layer->features.size() : 0, 3U) << ending << place;
        };
        for (qsizetype place = 0; place < good.size(); ++place) {
            endure(good.left(place), place);
            endure(QByteArray(good).replace(place, 1, "\xff", 1), place);
        }
        Write(ending, good);
    }
    EXPECT_EQ(Read().layer->features.size(), 3U);
}

TEST_F(LayerReaderTest, CountiesOfTheInstallation) {
    QElapsedTimer timer;
    timer.start();
    const LayerReading reading = ReadLayer(QStringLiteral(TESSARO_INSTALLATION "/Maps/usa_counties.SHP"));
    EXPECT_LT(timer.elapsed(), test::TimeBound(300));
    ASSERT_TRUE(reading.layer);
    const MapLayer& layer = *reading.layer;
    EXPECT_EQ(layer.features.size(), 3231U);
    EXPECT_EQ(layer.points.size(), 68148U);
    const int denver = layer.FeatureAt({-104.99, 39.74}, 0);
    EXPECT_EQ(layer.Text(denver, layer.NameField()).toStdString(), "Denver");
    timer.restart();
    for (int i = 0; i < 100; ++i)
        EXPECT_EQ(layer.FeatureAt({-104.99, 39.74}, 0), denver);
    EXPECT_LT(timer.elapsed(), test::TimeBound(200)); // 2 ms each
}

} // namespace tessaro
