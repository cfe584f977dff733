#include "sheets/ListSheet.h"

#include <gtest/gtest.h>

namespace tessaro {

namespace {

using office::Block;
using office::Cell;

/// Rows of two columns, with "short" and its number.
Block Table(int rows) {
    Block table;
    for (int row = 0; row < rows; ++row)
        table.push_back({QStringLiteral("short"), static_cast<double>(row)});
    return table;
}

bool Holds(const Block& rows, const Cell& cell) {
    for (const auto& row : rows)
        for (const Cell& other : row)
            if (other == cell) return true;
    return false;
}

} // namespace

TEST(ListSheetTest, AShortTableIsFittedByAllItsRows) {
    const Block table = Table(400);
    EXPECT_EQ(RowsToFit(table), table);
}

TEST(ListSheetTest, ALongTableIsFittedByItsHeadAndItsLongestTexts) {
    Block table = Table(60'000);
    const Cell text = QStringLiteral("a much longer text than all others");
    const Cell number = 123456789.25;
    const Cell wide = QStringLiteral("WWWWWWWWWWWWWWWWWWWW");
    table[50'000][0] = text;
    table[59'999][1] = number;
    for (std::size_t row = 30'000; row < 40'000; ++row)
        table[row][0] = QStringLiteral("twenty-one characters");
    table[45'000][0] = wide; // shorter by a character, but wider: rows of one text must not keep it out
    const Block rows = RowsToFit(table);
    EXPECT_LT(rows.size(), 600U);
    EXPECT_TRUE(std::equal(table.begin(), table.begin() + 500, rows.begin()));
    EXPECT_TRUE(Holds(rows, text));
    EXPECT_TRUE(Holds(rows, number));
    EXPECT_TRUE(Holds(rows, wide));
}

} // namespace tessaro
