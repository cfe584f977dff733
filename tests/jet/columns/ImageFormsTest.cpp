#include "jet/columns/ScanBlock.h"
#include "jet/columns/ScanDatabase.h"
#include "jet/engine/Sqlite.h"

namespace jet::test {
namespace {

const std::string kCount = "SELECT D.AreaNId, Count(*), Max(D.Datavalue) FROM Data D GROUP BY D.AreaNId";

/// What a row of the image has in a column, as text; "Null" for Null.
std::string TextIn(const ColumnImage& image, const ImageColumn& column, std::uint32_t row) {
    std::uint32_t code = 0;
    std::string room;
    switch (column.form) {
    case ColumnForm::Consecutive:
        return std::to_string(column.first + row);
    case ColumnForm::Plain:
        return std::to_string(column.plain[row]);
    case ColumnForm::Coded:
        WithCodes(column, [&](const auto& codeOf) { code = codeOf(row); });
        return column.hasNull && code == 0 ? "Null" : std::to_string(column.numbers[code]);
    case ColumnForm::Values:
        if (column.kinds[row] == static_cast<std::uint8_t>(ValueKind::Null)) return "Null";
        return std::string(image.TextOf(column, row, room));
    }
    return {};
}

/// More rows than the writer keeps in memory, whose columns change their form and width on the way.
TEST(ImageFormsTest, ALongTableStandsInTheImageCellByCell) {
    ScanDatabase database(1, 1, false);
    sqlite3* opened = nullptr;
    sqlite3_open(database.dataFile().c_str(), &opened);
    const Handle raw(opened);
    jet::Run(raw.get(), "DELETE FROM Data");
    jet::Run(raw.get(), "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 1200000) INSERT INTO "
                        "Data (RowNId, TimePeriodNId, IUSNId, AreaNId, SourceNId, FootnoteNId, Datavalue) "
                        "SELECT CASE WHEN i < 1100000 THEN i ELSE i + 5 END, i * 7 - 3, CASE WHEN i < 200000 THEN "
                        "100 - i % 200 WHEN i < 500000 THEN i % 60000 ELSE i % 300000 END, i % 300, "
                        "CASE WHEN i % 1000 > 0 THEN i % 3 END, CASE WHEN i > 900000 THEN i % 2 END, CASE WHEN i % 7 "
                        "= 0 THEN 'text ' || i WHEN i % 11 > 0 THEN (i % 5000) / 10 || '.' || (i % 10) END FROM n");
    ASSERT_TRUE(database.Scans(kCount));
    const auto image = ColumnImage::Open(database.imageFile(), {database.dataFile(), "Data"});
    ASSERT_EQ(image->rows(), 1'200'000U);
    ASSERT_EQ(image->columns().size(), 7U);
    EXPECT_EQ(image->columns()[static_cast<std::size_t>(image->find("RowNId"))].form, ColumnForm::Plain);
    EXPECT_EQ(image->columns()[static_cast<std::size_t>(image->find("TimePeriodNId"))].form, ColumnForm::Plain);
    EXPECT_EQ(image->columns()[static_cast<std::size_t>(image->find("IUSNId"))].width, 4);
    EXPECT_EQ(image->columns()[static_cast<std::size_t>(image->find("AreaNId"))].width, 2);
    std::string fields;
    for (const ImageColumn& column : image->columns())
        fields += (fields.empty() ? "" : ", ") + column.name;
    const Statement rows = Prepare(raw.get(), "SELECT " + fields + " FROM Data ORDER BY RowNId");
    std::size_t different = 0;
    for (std::uint32_t row = 0; Step(raw.get(), rows.get()); ++row)
        for (std::size_t i = 0; i < image->columns().size(); ++i) {
            const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(rows.get(), static_cast<int>(i)));
            different += TextIn(*image, image->columns()[i], row) != (text == nullptr ? "Null" : text) ? 1 : 0;
        }
    EXPECT_EQ(different, 0U);
}

} // namespace
} // namespace jet::test
