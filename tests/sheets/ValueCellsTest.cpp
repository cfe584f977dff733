#include "sheets/ValueCells.h"

#include "office/Limits.h"
#include "session/Session.h"
#include "support/TestSession.h"

namespace tessaro {

using office::Cell;
using ValueCellsTest = test::SessionTest;

TEST_F(ValueCellsTest, AValueKeepsWhatItSays) {
    struct Case {
        const char* value;
        Cell cell;
        int decimals;
        const char* format;
        const char* withSeparators;
        const char* withTwoDecimals;
    };
    const auto text = [](const char* shown) { return Cell(QString::fromLatin1(shown)); };
    const Case cases[] = {
        {"7", 7.0, 0, "0", "#,##0", "7.00"},
        {" 12.25 ", 12.25, 2, "0.00", "#,##0.00", " 12.25 "},
        {"-3", -3.0, 0, "0", "#,##0", "-3.00"},
        {"5.", 5.0, 0, "0", "#,##0", "5.00"},
        {"1.234", 1.234, 3, "0.000", "#,##0.000", "1.234"},
        {"1e5", 1e5, 0, "General", "General", "1e5"},
        {"0.00000000000000001", 1e-17, 15, "0.000000000000000", "#,##0.000000000000000", "0.00000000000000001"},
        {"n.a.", text("n.a."), 0, "General", "General", "n.a."},
        {"1,5", text("1,5"), 0, "General", "General", "1,5"},
        {"=1+1", text("=1+1"), 0, "General", "General", "=1+1"},
        {"", {}, 0, "General", "General", ""},
        {"  ", {}, 0, "General", "General", "  "},
    };
    for (const Case& c : cases) {
        const QString value = QLatin1String(c.value);
        EXPECT_EQ(ValueCell(value), c.cell) << c.value;
        EXPECT_EQ(DecimalsOf(value), c.decimals) << c.value;
        SysNumFormat = false;
        EXPECT_EQ(ValueFormat(value), QLatin1String(c.format)) << c.value;
        SysNumFormat = true;
        EXPECT_EQ(ValueFormat(value), QLatin1String(c.withSeparators)) << c.value;
        EXPECT_EQ(WithZeros(value, 2), QLatin1String(c.withTwoDecimals)) << c.value;
    }
}

TEST_F(ValueCellsTest, TextsAreCutToWhatACellHolds) {
    const QString longest(office::kMaxCellText, QLatin1Char('x'));
    EXPECT_EQ(TextCell(longest), Cell(longest));
    EXPECT_EQ(TextCell(longest + QLatin1Char('y')), Cell(longest));
    EXPECT_EQ(ValueCell(longest + QLatin1Char('y')), Cell(longest));
    EXPECT_EQ(TextCell({}), Cell());
    EXPECT_EQ(TextCell(QStringLiteral("007")), Cell(QStringLiteral("007")));
}

} // namespace tessaro
