#include "sheets/SheetLayout.h"

#include "session/Session.h"
#include "sheets/ListSheet.h"
#include "sheets/SheetTest.h"

namespace tessaro {

namespace {

class SheetLayoutTest : public test::SheetTest {
  protected:
    void SetUp() override {
        SheetTest::SetUp();
        ProductFont = QStringLiteral("Noto Sans Arabic");
        ProductFontSize = 10;
    }
    static double HeightOf(const office::Worksheet& sheet, int row) { return sheet.Cells(row, 1).Size().height(); }
};

} // namespace

TEST_F(SheetLayoutTest, RowsOfHighLettersAreHigher) {
    EXPECT_EQ(TallRowHeight({}), 0);
    EXPECT_EQ(TallRowHeight({QStringLiteral("Noto Sans"), 9}), 0);
    EXPECT_GT(TallRowHeight({QStringLiteral("Noto Sans Arabic"), 10}), 18);
}

TEST_F(SheetLayoutTest, ListsAndTablesGiveTheSameFontTheSameRows) {
    Language = QStringLiteral("Arabic [ar]");
    office::Workbook book = NewBook();
    office::Worksheet list = book.Sheet(1);
    office::Worksheet table = book.AddSheet(QStringLiteral("table"));
    WriteTable(list, {{QStringLiteral("head")}, {QStringLiteral("row")}});
    SetTallDataRows(table, 2, 3, 1, {QStringLiteral("Liberation Sans"), 8});
    SetTallDataRows(table, 4, 4, 1, {QStringLiteral("Liberation Sans"), 20});
    const double tall = TallRowHeight({QStringLiteral("Noto Sans Arabic"), 10});
    const double usual = HeightOf(table, 1);
    EXPECT_GT(tall, usual);
    EXPECT_NEAR(HeightOf(list, 2), tall, 0.5);
    EXPECT_NEAR(HeightOf(table, 2), tall, 0.5) << "texts are larger than the numbers beside them";
    EXPECT_NEAR(HeightOf(table, 3), tall, 0.5);
    EXPECT_NEAR(HeightOf(table, 4), 2 * tall, 0.5) << "numbers are larger than the texts beside them";
    EXPECT_NEAR(HeightOf(table, 5), usual, 0.1);
    Language = QStringLiteral("English [en]");
    SetTallDataRows(table, 1, 1, 1, {QStringLiteral("Liberation Sans"), 30});
    EXPECT_NEAR(HeightOf(table, 1), usual, 0.1) << "no letters of the language stand there";
    book.Close(false);
}

TEST_F(SheetLayoutTest, AGapIsOneNarrowRowAndTheOthersAreOutOfSight) {
    office::Workbook book = NewBook();
    office::Worksheet sheet = book.Sheet(1);
    const double usual = HeightOf(sheet, 1);
    SetGap(sheet, 3, 6);
    EXPECT_LT(HeightOf(sheet, 3), usual);
    EXPECT_GT(HeightOf(sheet, 3), 10) << "its number on the screen has room";
    EXPECT_LT(sheet.Cells(4, 1, 6, 1).Size().height(), 0.1);
    EXPECT_NEAR(HeightOf(sheet, 7), usual, 0.1);
    SetGap(sheet, 9, 9);
    EXPECT_NEAR(HeightOf(sheet, 10), usual, 0.1);
    book.Close(false);
}

} // namespace tessaro
