#include "gallery/TableSlides.h"

#include <gtest/gtest.h>

namespace tessaro {

namespace {

/// A table with heads of 7 rows, rows of 12 points and columns of one width.
TableMeasures Table(int columns, double width, int rows, int headColumns = 2) {
    return {{7, headColumns}, std::vector<double>(static_cast<std::size_t>(columns), width), 84, 12.0 * rows, rows};
}

/// Every line behind the heads stands in exactly one run, in order.
bool CoversOnce(const std::vector<SheetLines>& runs, int heads, int last) {
    int next = heads + 1;
    for (const SheetLines& run : runs) {
        if (run.first != next || run.last < run.first) return false;
        next = run.last + 1;
    }
    return next == last + 1;
}

} // namespace

TEST(TableSlidesTest, TablesAreCutWhereTheirTextWouldBeTooSmall) {
    const struct {
        const char* what;
        TableMeasures sizes;
        int leastAcross, mostAcross, leastDown, mostDown;
        office::SheetHeads heads;
    } cases[] = {
        {"small", Table(5, 60, 20), 1, 1, 1, 1, {0, 0}},
        {"long", Table(4, 60, 150), 1, 1, 4, 6, {7, 0}},
        {"wide", Table(240, 60, 20), 16, 24, 1, 1, {0, 2}},
        {"both", Table(40, 60, 150), 3, 4, 3, 5, {7, 2}},
        {"row heads of more than half a slide", Table(40, 60, 10, 12), 3, 4, 1, 1, {0, 0}},
        {"one column wider than a slide", Table(1, 5000, 10, 0), 1, 1, 1, 1, {0, 0}},
        {"nothing", {}, 1, 1, 1, 1, {0, 0}},
    };
    for (const auto& c : cases) {
        const SlidePlan plan = PlanSlides(c.sizes);
        const int across = static_cast<int>(plan.columns.size());
        const int down = static_cast<int>(plan.rows.size());
        EXPECT_TRUE(across >= c.leastAcross && across <= c.mostAcross) << c.what << ": " << across;
        EXPECT_TRUE(down >= c.leastDown && down <= c.mostDown) << c.what << ": " << down;
        EXPECT_EQ(plan.heads.rows, c.heads.rows) << c.what;
        EXPECT_EQ(plan.heads.columns, c.heads.columns) << c.what;
        EXPECT_EQ(plan.Count(), across * down);
        if (c.sizes.columns.empty()) continue;
        EXPECT_TRUE(CoversOnce(plan.columns, plan.heads.columns, static_cast<int>(c.sizes.columns.size()))) << c.what;
        EXPECT_TRUE(CoversOnce(plan.rows, plan.heads.rows, c.sizes.heads.rows + c.sizes.bodyRows)) << c.what;
    }
}

TEST(TableSlidesTest, TheLastSlideIsNotLeftWithAScrap) {
    const SlidePlan plan = PlanSlides(Table(17, 62, 20)); // 14 columns fit beside nothing, 12 beside the heads
    ASSERT_EQ(plan.columns.size(), 2u);
    EXPECT_LE(plan.columns[0].last - plan.columns[0].first - (plan.columns[1].last - plan.columns[1].first), 2);
}

} // namespace tessaro
