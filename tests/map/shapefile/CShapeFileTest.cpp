#include "map/shapefile/CShapeFile.h"

#include "map/shapefile/ShapefileError.h"
#include "support/FullDisk.h"
#include "support/ShapelibFiles.h"

#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace tessaro {

namespace {

using test::Ring;
using test::Rings;

class ShapeFileTest : public testing::Test {
  protected:
    [[nodiscard]] QString Base(const char* name = "layer") const { return folder_.filePath(QLatin1String(name)); }
    [[nodiscard]] static cFileName Spec(const QString& base) {
        cFileName spec;
        spec.SetFileSpec(base + QStringLiteral(".shp"));
        return spec;
    }
    [[nodiscard]] static QByteArray Bytes(const QString& file) {
        QFile source(file);
        return source.open(QIODevice::ReadOnly) ? source.readAll() : QByteArray();
    }
    static std::shared_ptr<CPolygon> Polygon(const Rings& rings) {
        auto polygon = std::make_shared<CPolygon>();
        for (const Ring& ring : rings) {
            auto part = std::make_shared<CPart>();
            for (const auto& [x, y] : ring)
                part->Add(std::make_shared<CPoint>(x, y));
            polygon->Add(part);
        }
        return polygon;
    }
    static std::shared_ptr<CPolygon> NullPolygon() {
        auto polygon = std::make_shared<CPolygon>();
        polygon->MakeNull(true);
        return polygon;
    }
    static Rings RingsOf(const CPolygon& polygon) {
        Rings rings;
        for (const auto& part : polygon) {
            Ring ring;
            for (const auto& point : *part)
                ring.emplace_back(point->X(), point->Y());
            rings.push_back(ring);
        }
        return rings;
    }
    static void Expect(const ShapefileError& error, unsigned number, const char* text, const char* source) {
        EXPECT_EQ(error.number, number);
        EXPECT_EQ(error.text.toStdString(), text);
        EXPECT_EQ(error.source.toStdString(), source);
    }
    template <class Call> static void ExpectError(Call&& call, unsigned number, const char* text, const char* source) {
        try {
            call();
            ADD_FAILURE() << text;
        } catch (const ShapefileError& error) {
            Expect(error, number, text, source);
        }
    }

    QTemporaryDir folder_;
};

const Rings kSquare{{{1, 1}, {1, 3}, {3, 3}, {3, 1}, {1, 1}}};
const Rings kTwoParts{{{-5, 0}, {-5, 8}, {0, 8}, {-5, 0}}, {{10, 2}, {12, 2}, {11, 1}, {10, 2}}};

/// Bytes written as hexadecimal digits with blanks.
QByteArray Hex(const char* digits) {
    return QByteArray::fromHex(digits);
}

} // namespace

TEST_F(ShapeFileTest, WritesTheseBytes) {
    CShapeFile file;
    file.SetFileSpec(Spec(Base()), true, 1);
    EXPECT_EQ(file.FileType(), 5); // always polygons
    const QByteArray empty = Hex("0000270a") + QByteArray(24, '\0') + Hex("e803000005000000") + QByteArray(64, '\0');
    EXPECT_EQ(Bytes(Base() + QStringLiteral(".shp")), empty);
    EXPECT_EQ(Bytes(Base() + QStringLiteral(".shx")), empty);

    file.Add(Polygon({{{1, 2}, {3, 4}}}));
    file.Add(NullPolygon());
    const QByteArray box = Hex("000000000000f03f 0000000000000040 0000000000000840 0000000000001040");
    const auto header = [&](const char* words) {
        return Hex("0000270a") + QByteArray(20, '\0') + Hex(words) + Hex("e803000005000000") + box +
               QByteArray(32, '\0');
    };
    // The null record is not told in the lengths, and has 2 bytes where it says 4.
    EXPECT_EQ(Bytes(Base() + QStringLiteral(".shp")), header("0000005e") + Hex("00000001 00000028 05000000") + box +
                                                          Hex("01000000 02000000 00000000") + box +
                                                          Hex("00000002 00000002 0000"));
    EXPECT_EQ(Bytes(Base() + QStringLiteral(".shx")),
              header("00000036") + Hex("00000032 00000028") + Hex("0000005e 00000002"));
    EXPECT_EQ(file.Count(), 2);

    file.Add(Polygon(kSquare));
    const QByteArray index = Bytes(Base() + QStringLiteral(".shx"));
    EXPECT_EQ(index.mid(24, 4), Hex("0000003e"));
    EXPECT_EQ(index.mid(116), Hex("00000063 00000040")) << "behind the short null record";
}

TEST_F(ShapeFileTest, AnotherReaderReadsWhatItWrites) {
    {
        CShapeFile file;
        file.SetFileSpec(Spec(Base()), true, 1);
        file.Add(Polygon(kSquare));
        file.Add(Polygon(kTwoParts));
    }
    const auto shapes = test::OpenShapes(Base());
    ASSERT_TRUE(shapes);
    int count = 0;
    int type = 0;
    double low[4];
    double high[4];
    SHPGetInfo(shapes.get(), &count, &type, low, high);
    EXPECT_EQ(count, 2);
    EXPECT_EQ(type, SHPT_POLYGON);
    EXPECT_EQ(std::vector<double>({low[0], low[1], high[0], high[1]}), std::vector<double>({-5, 0, 12, 8}));
    EXPECT_EQ(test::RingsOf(shapes.get(), 0), kSquare);
    EXPECT_EQ(test::RingsOf(shapes.get(), 1), kTwoParts);
}

TEST_F(ShapeFileTest, ReadsWhatAnotherWriterWrites) {
    const std::vector<Rings> records{kSquare, kTwoParts, {{{0, 0}, {0, 1e-300}, {-1e300, 1}, {0, 0}}}};
    test::WriteShapes(Base(), SHPT_POLYGON, records);
    CShapeFile file;
    file.SetFileSpec(Spec(Base()), false);
    ASSERT_EQ(file.Count(), 3);
    EXPECT_EQ(file.FileType(), 5);
    EXPECT_EQ(file.Right(), 12);
    EXPECT_EQ(file.Top(), 8);
    for (int record = 3; record >= 1; --record) {
        const auto polygon = std::dynamic_pointer_cast<CPolygon>(file.Item(record));
        ASSERT_TRUE(polygon);
        EXPECT_EQ(RingsOf(*polygon), records[static_cast<std::size_t>(record) - 1]);
    }
    const auto polygon = file.Item(2);
    EXPECT_EQ(polygon->Left(), -5);
    EXPECT_EQ(polygon->Bottom(), 0);
}

TEST_F(ShapeFileTest, ReadsPointsInAnyCaseOfTheEnding) {
    test::WriteShapes(Base("Cities"), SHPT_POINT, {{{{-77.5, 38.25}}}, {{{13, -52}}}});
    QFile::rename(Base("Cities.shp"), Base("CITIES.SHP"));
    CShapeFile file;
    file.SetFileSpec(Spec(Base("cities")), false);
    ASSERT_EQ(file.Count(), 2);
    EXPECT_EQ(file.FileType(), 1);
    const auto point = std::dynamic_pointer_cast<CPoint>(file.Item(1));
    ASSERT_TRUE(point);
    EXPECT_EQ(point->X(), -77.5);
    EXPECT_EQ(point->Y(), 38.25);
    EXPECT_EQ(file.Left(), -77.5);
    EXPECT_EQ(file.Bottom(), -52);
    for (const int outside : {3, 0, -1, 2147483647, -2147483647})
        EXPECT_EQ(file.Item(outside), nullptr) << outside;
}

TEST_F(ShapeFileTest, OtherTypesGiveNothing) {
    test::WriteShapes(Base(), SHPT_ARC, {{{{0, 0}, {1, 1}}}});
    CShapeFile file;
    file.SetFileSpec(Spec(Base()), false);
    EXPECT_EQ(file.FileType(), 3);
    EXPECT_EQ(file.Item(1), nullptr);
}

TEST_F(ShapeFileTest, TheExtentGrowsFromTheFirstRecord) {
    CShapeFile file;
    file.SetFileSpec(Spec(Base("grows")), true, 5);
    file.Add(Polygon(kSquare));
    EXPECT_EQ(file.Left(), 1); // taken over, although 0 lies beyond
    EXPECT_EQ(file.Bottom(), 1);
    file.Add(Polygon(kTwoParts));
    EXPECT_EQ(file.Left(), -5);
    EXPECT_EQ(file.Top(), 8);
    EXPECT_EQ(file.Right(), 12);
    EXPECT_EQ(file.Bottom(), 0);

    CShapeFile later;
    later.SetFileSpec(Spec(Base("later")), true, 5);
    later.Add(NullPolygon());
    later.Add(Polygon(kSquare));
    EXPECT_EQ(later.Left(), 0); // the first record was none: the extent starts from the origin
    EXPECT_EQ(later.Right(), 3);
    CShapeFile read;
    read.SetFileSpec(Spec(Base("later")), false);
    EXPECT_EQ(read.Left(), 0);
    EXPECT_EQ(read.Top(), 3);
}

TEST_F(ShapeFileTest, CreatingReplacesFormerRecords) {
    test::WriteShapes(Base(), SHPT_POLYGON, {kSquare, kSquare, kSquare});
    {
        CShapeFile file;
        file.SetFileSpec(Spec(Base()), true, 5);
        file.Add(Polygon(kTwoParts));
        EXPECT_EQ(RingsOf(dynamic_cast<CPolygon&>(*file.Item(1))), kTwoParts);
    }
    CShapeFile file;
    file.SetFileSpec(Spec(Base()), false);
    EXPECT_EQ(file.Count(), 1);
    EXPECT_EQ(RingsOf(dynamic_cast<CPolygon&>(*file.Item(1))), kTwoParts);
}

TEST_F(ShapeFileTest, TenThousandParts) {
    Rings rings;
    for (int i = 0; i < 10000; ++i)
        rings.push_back({{i, 0}, {i, 1}, {i + 0.5, 1}, {i, 0}});
    CShapeFile file;
    file.SetFileSpec(Spec(Base()), true, 5);
    file.Add(Polygon(rings));
    EXPECT_EQ(RingsOf(dynamic_cast<CPolygon&>(*file.Item(1))), rings);
    EXPECT_EQ(test::RingsOf(test::OpenShapes(Base()).get(), 0).size(), 10000U);
}

TEST_F(ShapeFileTest, TellsWhyAFileIsNotOpened) {
    CShapeFile file;
    const char* const source = "C_ShapeFile::SetFileSpec";
    test::WriteShapes(Base(), SHPT_POLYGON, {kSquare});
    ExpectError([&] { file.SetFileSpec(Spec(Base()), true); }, 0x8004020D,
                "The ShapeType argument is not optional when argument status is CREATEIT", source);
    EXPECT_EQ(test::RingsOf(test::OpenShapes(Base()).get(), 0), kSquare) << "the file is lost";

    const auto change = [&](const char* extension, const QByteArray& bytes) {
        QFile damaged(Base() + QLatin1String(extension));
        ASSERT_TRUE(damaged.open(QIODevice::ReadWrite));
        damaged.write(bytes);
    };
    change(".shp", Hex("0000270b"));
    ExpectError([&] { file.SetFileSpec(Spec(Base()), false); }, 0x80040207,
                "The shp file has an invalid shape code in the main header.", source);
    change(".shx", Hex("0a270000"));
    ExpectError([&] { file.SetFileSpec(Spec(Base()), false); }, 0x80040207,
                "The shx file has an invalid shape code in the main header.", source);
    EXPECT_EQ(file.Count(), 0);
    EXPECT_EQ(file.Item(1), nullptr);
    const QString missing = Base("none.shx");
    ExpectError([&] { file.SetFileSpec(Spec(Base("none")), false); }, 53,
                qPrintable(QStringLiteral("File not found: ") + missing), source);
    EXPECT_FALSE(QFileInfo::exists(missing));
    ExpectError([&] { file.SetFileSpec(Spec(Base("none/deep")), true, 5); }, 75,
                qPrintable(QStringLiteral("Path/File access error: ") + Base("none/deep.shx")), source);
}

TEST_F(ShapeFileTest, TellsWhyARecordIsNotRead) {
    const char* const item = "CShapeFile::Item";
    test::WriteShapes(Base("points"), SHPT_POINT, {{{{1, 2}}}, {}});
    CShapeFile points;
    points.SetFileSpec(Spec(Base("points")), false);
    ExpectError([&] { std::ignore = points.Item(2); }, 0x8004020E, "A shape type does not match main header type.",
                item);
    test::WriteShapes(Base(), SHPT_POLYGON, {kSquare});
    CShapeFile file;
    file.SetFileSpec(Spec(Base()), false);
    const char* const behind = "The offset read from index file is larger then the mainfile size";
    ExpectError([&] { std::ignore = file.Item(2); }, 0x80040206, behind, item);
    ExpectError([&] { std::ignore = file.Item(0); }, 0x80040206, behind, item);
    const struct {
        const char* what;
        int position;
        QByteArray bytes;
        unsigned number;
    } damages[] = {
        {"record number", 100, Hex("00000002"), 0x80040205},
        {"type of another kind", 108, Hex("01000000"), 0x8004020E},
        {"null", 108, Hex("00000000"), 0x8004020E},
        {"parts below 0", 144, Hex("ffffffff"), 62},
        {"too many parts", 144, Hex("ffffff7f"), 62},
        {"points below 0", 148, Hex("000000f0"), 62},
        {"too many points", 148, Hex("06000000"), 62},
        {"a part that starts below 0", 152, Hex("ffffffff"), 9},
        {"a part that starts behind the points", 152, Hex("06000000"), 9},
    };
    const QByteArray good = Bytes(Base() + QStringLiteral(".shp"));
    for (const auto& damage : damages) {
        QFile changed(Base() + QStringLiteral(".shp"));
        ASSERT_TRUE(changed.open(QIODevice::WriteOnly));
        changed.write(QByteArray(good).replace(damage.position, damage.bytes.size(), damage.bytes));
        changed.close();
        try {
            std::ignore = file.Item(1);
            ADD_FAILURE() << damage.what;
        } catch (const ShapefileError& error) {
            EXPECT_EQ(error.number, damage.number) << damage.what;
            EXPECT_EQ(error.origin.toStdString(), "CShapeFile::ReadPolygon") << damage.what;
        }
    }
}

TEST_F(ShapeFileTest, TellsWhyAShapeIsNotAdded) {
    CShapeFile file;
    const char* const add = "CShapeFile::Add";
    ExpectError([&] { file.Add(Polygon(kSquare)); }, 52, "Bad file name or number: ", add);
    file.SetFileSpec(Spec(Base()), true, 5);
    ExpectError([&] { file.Add(std::make_shared<CPoint>()); }, 13, "Type mismatch", add);
    ExpectError([&] { file.Add(std::make_shared<CPart>()); }, 13, "Type mismatch", add);
    ExpectError([&] { file.Add(nullptr); }, 13, "Type mismatch", add);
    EXPECT_EQ(file.Count(), 0);
    const auto nothing = std::make_shared<CPoint>();
    nothing->MakeNull(true);
    file.Add(nothing);
    EXPECT_EQ(file.Count(), 1);
    file.Add(Polygon(kSquare));
    CShapeFile reading;
    reading.SetFileSpec(Spec(Base()), false);
    ExpectError([&] { reading.Add(Polygon(kSquare)); }, 75,
                qPrintable(QStringLiteral("Path/File access error: ") + Base() + QStringLiteral(".shp")), add);
}

TEST_F(ShapeFileTest, AFullDiskLeavesWhatWasWritten) {
    CShapeFile file;
    file.SetFileSpec(Spec(Base()), true, 5);
    file.Add(Polygon(kSquare));
    const QByteArray before = Bytes(Base() + QStringLiteral(".shp"));
    {
        const test::FullDisk full(static_cast<rlim_t>(before.size()) + 20);
        ExpectError([&] { file.Add(Polygon(kTwoParts)); }, 61,
                    qPrintable(QStringLiteral("Disk full: ") + Base() + QStringLiteral(".shp")), "CShapeFile::Add");
    }
    EXPECT_EQ(Bytes(Base() + QStringLiteral(".shp")), before);
    EXPECT_EQ(file.Count(), 1);
    file.Add(Polygon(kTwoParts));
    EXPECT_EQ(test::RingsOf(test::OpenShapes(Base()).get(), 1), kTwoParts);
}

} // namespace tessaro
