#include "controls/SharedWidths.h"

#include <QFont>

#include <gtest/gtest.h>

namespace tessaro {
namespace {

TEST(SharedWidthsTest, WideColumnsGiveWayToNarrowOnes) {
    struct Case {
        const char* name;
        std::vector<ColumnWish> wishes;
        int room;
        std::vector<int> widths;
    };
    const Case cases[] = {
        {"no column", {}, 100, {}},
        {"all fit", {{50, 20}, {120, 20}}, 200, {50, 120}},
        {"the wide one gives way", {{50, 20}, {300, 20}}, 200, {50, 150}},
        {"alike they share", {{300, 20}, {300, 20}}, 200, {100, 100}},
        {"by weight", {{300, 20, 3}, {300, 20, 1}}, 200, {150, 50}},
        {"none below its least", {{300, 20, 9}, {300, 90, 1}}, 200, {110, 90}},
        {"not even the least fit", {{300, 80}, {300, 90}}, 100, {80, 90}},
        {"no room at all", {{300, 20}}, 0, {20}},
    };
    for (const Case& c : cases) {
        const std::vector<int> widths = SharedWidths(c.wishes, c.room);
        ASSERT_EQ(widths.size(), c.widths.size()) << c.name;
        for (std::size_t column = 0; column < widths.size(); ++column)
            EXPECT_NEAR(widths[column], c.widths[column], 1) << c.name << " " << column;
    }
}

TEST(SharedWidthsTest, TheWidestOfVeryManyTextsIsFound) {
    LongestTexts texts;
    const QFontMetrics metrics{QFont()};
    EXPECT_EQ(texts.Width(metrics), 0);
    for (int n = 0; n < 1000; ++n)
        texts.Take(QString(n % 50, QLatin1Char('i')));
    texts.Take(QString(49, QLatin1Char('W')));
    EXPECT_EQ(texts.Width(metrics), metrics.horizontalAdvance(QString(49, QLatin1Char('W'))));
}

} // namespace
} // namespace tessaro
