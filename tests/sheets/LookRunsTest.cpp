#include "sheets/LookRuns.h"

#include "sheets/SheetTest.h"
#include "support/TimeBound.h"

#include <QElapsedTimer>

namespace tessaro {

using LookRunsTest = test::SheetTest;

TEST_F(LookRunsTest, EveryCellGetsItsOwnLookAndNoOther) {
    constexpr int kRows = 40;
    // Runs, gaps and changes in each column, with two looks that take turns in one of them.
    const auto colourOf = [](int row, int column) {
        if (column == 1) return row < 10 ? 3 : row % 2 == 0 ? 5 : 3;
        if (column == 2) return row % 7 == 0 ? 0 : 3;
        return row == kRows ? 5 : 0;
    };
    office::Workbook book = NewBook();
    office::Worksheet sheet = book.Sheet(1);
    sheet.Cells(1, 1).SetValues(office::Block(kRows, std::vector<office::Cell>(3, QStringLiteral("x"))));
    LookRuns looks;
    for (int row = 1; row <= kRows; ++row)
        for (int column = 1; column <= 3; ++column)
            if (const int colour = colourOf(row, column); colour > 0)
                looks.Add(row, column, {.fontColorIndex = colour});
    looks.WriteTo(sheet);
    const auto read = SaveAndRead(book).front();
    for (int row = 1; row <= kRows; ++row)
        for (int column = 1; column <= 3; ++column) {
            const int colour = colourOf(row, column);
            const QString wanted = QLatin1String(colour == 3 ? "FF0000" : colour == 5 ? "0000FF" : "");
            const QString has = read.Look(row, column).value(QLatin1String("colour")).toString();
            EXPECT_EQ(has == QLatin1String("000000") ? QString() : has, wanted) << row << ", " << column;
        }
}

TEST_F(LookRunsTest, AColumnOfOneLookCostsNoMoreThanOneRange) {
    constexpr int kRows = 60'000;
    office::Workbook book = NewBook();
    office::Worksheet sheet = book.Sheet(1);
    sheet.Cells(1, 1).SetValues(office::Block(kRows, std::vector<office::Cell>(2, QStringLiteral("x"))));
    LookRuns looks;
    for (int row = 1; row <= kRows; ++row)
        for (const int column : {1, 2})
            looks.Add(row, column, {.fontColorIndex = 3});
    QElapsedTimer clock;
    clock.start();
    looks.WriteTo(sheet);
    static_cast<void>(sheet.Cells(kRows, 1).Value()); // what waits has to be there before it is read
    EXPECT_LT(clock.elapsed(), test::TimeBound(5000));
    book.Close(false);
}

} // namespace tessaro
