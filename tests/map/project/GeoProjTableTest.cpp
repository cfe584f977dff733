#include "map/project/GeoProjTable.h"

#include "map/MapTest.h"
#include "support/Locales.h"

#include <QFile>

#include <memory>
#include <shapefil.h>

namespace tessaro::test {

namespace {

struct CloseTable {
    void operator()(DBFHandle table) const { DBFClose(table); }
};
using Table = std::unique_ptr<std::remove_pointer_t<DBFHandle>, CloseTable>;

class GeoProjTableTest : public MapTest {
  protected:
    Table Exported() {
        std::vector<NewFile> files;
        const QString path = Folder() + QStringLiteral("/my.map.apr");
        rows_ = ExportGeoProjTable(path, files).value_or(-1);
        EXPECT_TRUE(ReplaceFiles(files));
        EXPECT_FALSE(QFile::exists(TempFolder + QStringLiteral("/GeoProj.dbf")));
        return Table(DBFOpen((Folder() + QStringLiteral("/my.map.dbf")).toUtf8().constData(), "rb"));
    }

    int rows_ = -1;
};

} // namespace

TEST_F(GeoProjTableTest, HasTheFieldsAndRowsOfTheMap) {
    PutValues(std::vector<double>{1, 20.25, -3});
    ChangeData(
        QStringLiteral("UPDATE _MapData SET AreaName = 'Köln ' & AreaID, [Label] = 'منطقة', BreakValue = 2, "
                       "[Color] = 16777215, [Indicator] = 'Area', SubPop = 'Total', Unit = '%', Source = 'Census'"));
    const Table table = Exported();
    ASSERT_TRUE(table);
    EXPECT_EQ(rows_, 3);
    std::string fields;
    for (int i = 0; i < DBFGetFieldCount(table.get()); ++i) {
        char name[12] = {};
        int width = 0;
        int decimals = 0;
        (void)DBFGetFieldInfo(table.get(), i, name, &width, &decimals);
        fields += std::string(name) + DBFGetNativeFieldType(table.get(), i) + std::to_string(decimals) + " ";
    }
    EXPECT_EQ(fields, "YearC0 AreaidC0 AreanameC0 IndicatorC0 SubpopulatC0 DatavalueN2 UnitC0 SourceC0 BreakvalueN0 "
                      "LabelC0 ColorN0 ");
    Records rows = Select(QStringLiteral("SELECT TimePeriod, AreaId, AreaName, [Indicator], Subpop, Datavalue, Unit, "
                                         "Source, Breakvalue, Label, Color FROM [_MapData]"));
    ASSERT_EQ(DBFGetRecordCount(table.get()), 3);
    for (int row = 0; row < 3; ++row, rows.MoveNext())
        for (int field = 0; field < 11; ++field)
            EXPECT_EQ(QString::fromUtf8(DBFReadStringAttribute(table.get(), row, field)),
                      rows.Text(static_cast<std::size_t>(field)))
                << row << " " << field;
    EXPECT_EQ(QByteArray(DBFReadStringAttribute(table.get(), 1, 5)).trimmed().toDouble(), 20.25);
    EXPECT_STREQ(DBFGetCodePage(table.get()), "UTF-8");
}

TEST_F(GeoProjTableTest, NumbersKeepTheirValue) {
    const std::vector<QString> values{QStringLiteral("0.1"),
                                      QStringLiteral(" 1.5e3 "),
                                      QStringLiteral("1E300"),
                                      QStringLiteral("-1.2345678901234567E-300"),
                                      QStringLiteral("123456789012345678.901234567"),
                                      QStringLiteral("0.1234567890123456789012"),
                                      QStringLiteral("+7")};
    PutValues(values);
    ChangeData(QStringLiteral("INSERT INTO _MapData (AreaID, DataValue) VALUES ('none', Null)"));
    const CommaLocale comma;
    const Table table = Exported();
    ASSERT_TRUE(table);
    for (std::size_t i = 0; i < values.size(); ++i) {
        const QByteArray text = DBFReadStringAttribute(table.get(), static_cast<int>(i), 5);
        const double wanted = values[i].trimmed().toDouble();
        EXPECT_NEAR(text.toDouble() / wanted, 1, 1e-11) << text.constData();
    }
    EXPECT_NE(DBFIsAttributeNULL(table.get(), static_cast<int>(values.size()), 5), 0);
}

TEST_F(GeoProjTableTest, EmptyMapsAndNoTablesAreTold) {
    const Table table = Exported();
    ASSERT_TRUE(table);
    EXPECT_EQ(rows_, 0);
    EXPECT_EQ(DBFGetFieldCount(table.get()), 11);
    EXPECT_FALSE(WithProjectFields({}));
    EXPECT_FALSE(WithProjectFields(QByteArray(1000, '\x0D')));
    Connection.reset();
    std::vector<NewFile> files;
    EXPECT_FALSE(ExportGeoProjTable(Folder() + QStringLiteral("/x.apr"), files));
    EXPECT_TRUE(files.empty());
}

} // namespace tessaro::test
