#include "sheets/ColumnWidths.h"

#include <gtest/gtest.h>

namespace tessaro {

TEST(ColumnWidthsTest, AWideTableTakesSeveralPagesSideBySide) {
    const struct {
        int columns;
        double size;
        int pages;
    } cases[] = {{3, 10, 1}, {11, 10, 1}, {20, 10, 2}, {20, 5, 1}, {11, 16, 2}, {60, 10, 5}};
    for (const auto& c : cases) {
        ColumnWidths widths;
        widths.Add(1, QStringLiteral("AFRAGO"));
        widths.Add(2, QStringLiteral("Central African Republic"));
        for (int column = 0; column < c.columns; ++column)
            widths.Add(3 + column, QStringLiteral("101,234,567"));
        EXPECT_EQ(widths.PagesFor(2, {{}, c.size}), c.pages) << c.columns << " columns of " << c.size << " points";
    }
}

TEST(ColumnWidthsTest, LongTextsAreCutToTheWidestColumn) {
    ColumnWidths widths;
    widths.AddHead(1, QString(100, QLatin1Char('x')));
    widths.Add(2, QString(100, QLatin1Char('x')));
    widths.Add(3, QStringLiteral("one line\nanother longer line"));
    widths.Add(4, {});
    const SheetFont font;
    EXPECT_DOUBLE_EQ(widths.SheetWidth(1, font), ColumnWidths::kWidestHead + 2);
    EXPECT_DOUBLE_EQ(widths.SheetWidth(2, font), ColumnWidths::kWidestCell + 2);
    EXPECT_DOUBLE_EQ(widths.SheetWidth(3, font), 19 + 2) << "the longer of two lines";
    EXPECT_DOUBLE_EQ(widths.SheetWidth(4, font), 2);
    EXPECT_DOUBLE_EQ(widths.SheetWidth(5, font), 0) << "a column that was never told";
    EXPECT_FALSE(widths.Wraps(1)) << "heads are wrapped anyway";
    EXPECT_TRUE(widths.Wraps(2));
    EXPECT_FALSE(widths.Wraps(3));
}

TEST(ColumnWidthsTest, TheWidestColumnsGiveWayUntilAPageHoldsTheTable) {
    const SheetFont font;
    const struct {
        int texts;
        bool narrows;
        int pages;
    } cases[] = {{1, false, 1}, {4, true, 1}, {6, true, 1}, {20, false, 5}};
    for (const auto& c : cases) {
        ColumnWidths widths;
        widths.Add(1, QStringLiteral("101,234,567"));
        for (int column = 2; column <= c.texts + 1; ++column)
            widths.Add(column, QString(50, QLatin1Char('x')));
        const double number = widths.SheetWidth(1, font);
        const double text = widths.SheetWidth(2, font);
        widths.FitToPage(font);
        EXPECT_DOUBLE_EQ(widths.SheetWidth(1, font), number);
        EXPECT_EQ(widths.Wraps(2), c.narrows) << c.texts;
        EXPECT_EQ(widths.SheetWidth(2, font) < text, c.narrows) << c.texts;
        EXPECT_EQ(widths.PagesFor(0, font), c.pages) << c.texts;
    }
}

} // namespace tessaro
