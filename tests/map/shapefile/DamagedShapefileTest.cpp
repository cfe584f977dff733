#include "map/shapefile/CShapeFile.h"
#include "map/shapefile/ShapefileError.h"
#include "support/ShapelibFiles.h"

#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <array>
#include <gtest/gtest.h>

namespace tessaro {

namespace {

/// A good pair of files that is damaged again and again.
class DamagedShapefileTest : public testing::Test {
  protected:
    void Make(int type, const std::vector<test::Rings>& records) {
        test::WriteShapes(Base(), type, records);
        main_ = Read(".shp");
        index_ = Read(".shx");
    }
    void Put(const QByteArray& main, const QByteArray& index) {
        Write(".shp", main);
        Write(".shx", index);
    }
    /// How many of the first records are read; what fails, fails with an error of this room.
    int RecordsRead() {
        int read = 0;
        try {
            CShapeFile file;
            cFileName spec;
            spec.SetFileSpec(Base() + QStringLiteral(".shp"));
            file.SetFileSpec(spec, false);
            EXPECT_LE(file.Count(), 3);
            for (int record = 1; record <= 3; ++record)
                read += IsRead(file, record) ? 1 : 0;
        } catch (const ShapefileError& error) {
            EXPECT_FALSE(error.text.isEmpty());
        }
        return read;
    }

    QByteArray main_;
    QByteArray index_;

  private:
    static bool IsRead(CShapeFile& file, int record) {
        try {
            return file.Item(record) != nullptr;
        } catch (const ShapefileError& error) {
            EXPECT_FALSE(error.text.isEmpty());
            return false;
        }
    }
    [[nodiscard]] QString Base() const { return folder_.filePath(QStringLiteral("layer")); }
    [[nodiscard]] QByteArray Read(const char* extension) const {
        QFile file(Base() + QLatin1String(extension));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    void Write(const char* extension, const QByteArray& bytes) const {
        QFile file(Base() + QLatin1String(extension));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    QTemporaryDir folder_;
};

const test::Rings kTriangle{{{0, 0}, {0, 5}, {5, 0}, {0, 0}}};
const test::Rings kHole{{{0, 0}, {0, 9}, {9, 9}, {0, 0}}, {{2, 3}, {3, 4}, {2, 4}, {2, 3}}};

} // namespace

TEST_F(DamagedShapefileTest, EveryPrefixGivesWhatItHolds) {
    for (const int type : {SHPT_POLYGON, SHPT_POINT}) {
        const bool points = type == SHPT_POINT;
        Make(type, points ? std::vector<test::Rings>{{{{1, 2}}}, {{{3, 4}}}, {{{5, 6}}}}
                          : std::vector<test::Rings>{kTriangle, kHole, kTriangle});
        ASSERT_EQ(RecordsRead(), 3) << type;
        const auto ends = points ? std::array{128, 156, 184} : std::array{220, 408, 528};
        ASSERT_EQ(main_.size(), ends.back());
        for (int length = 0; length < main_.size(); ++length) {
            Put(main_.left(length), index_);
            EXPECT_EQ(RecordsRead(), std::count_if(ends.begin(), ends.end(), [&](int end) { return end <= length; }))
                << length;
        }
        for (int length = 0; length < index_.size(); ++length) {
            Put(main_, index_.left(length));
            EXPECT_EQ(RecordsRead(), length < 100 ? 0 : (length - 100) / 8) << length;
        }
    }
}

TEST_F(DamagedShapefileTest, EveryChangedByteIsEndured) {
    Make(SHPT_POLYGON, {kTriangle, kHole, kTriangle});
    for (const char value : {'\0', '\xff'}) {
        for (int place = 0; place < main_.size(); ++place) {
            Put(QByteArray(main_).replace(place, 1, QByteArray(1, value)), index_);
            EXPECT_GE(RecordsRead(), place < 100 ? 0 : 2) << place;
        }
        for (int place = 0; place < index_.size(); ++place) {
            Put(main_, QByteArray(index_).replace(place, 1, QByteArray(1, value)));
            EXPECT_GE(RecordsRead(), place < 100 ? 0 : 2) << place;
        }
    }
}

} // namespace tessaro
