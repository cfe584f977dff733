#include "sheets/FurtherSheets.h"

#include "sheets/SheetTest.h"

namespace tessaro {

using FurtherSheetsTest = test::SheetTest;

TEST_F(FurtherSheetsTest, GoOnUntilNothingIsLeft) {
    struct Case {
        QString name;
        int sheets;
        QStringList names;
    };
    const QString longName(31, QLatin1Char('n'));
    const Case cases[] = {
        {QStringLiteral("Area"), 1, {"Sheet1"}},
        {QStringLiteral("Area"), 3, {"Area", "Area 2", "Area 3"}},
        {longName, 2, {longName, longName.left(29) + QStringLiteral(" 2")}},
    };
    for (const Case& c : cases) {
        office::Workbook book = NewBook();
        book.Sheet(1).SetName(QStringLiteral("Sheet1"));
        int filled = 0;
        EXPECT_EQ(FillSheets(book, book.Sheet(1), c.name,
                             [&](office::Worksheet& sheet) {
                                 sheet.Cells(1, 1).SetValue(static_cast<double>(++filled));
                                 return filled < c.sheets;
                             }),
                  c.sheets);
        const auto sheets = SaveAndRead(book);
        ASSERT_EQ(sheets.size(), static_cast<std::size_t>(c.sheets));
        for (int i = 0; i < c.sheets; ++i) {
            EXPECT_EQ(sheets[static_cast<std::size_t>(i)].name, c.names[i]);
            EXPECT_EQ(sheets[static_cast<std::size_t>(i)].At(1, 1).toInt(), i + 1);
        }
    }
}

} // namespace tessaro
