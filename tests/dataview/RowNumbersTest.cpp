#include "dataview/RowNumbers.h"

#include <gtest/gtest.h>

namespace tessaro::test {

namespace {

TEST(RowNumbersTest, RemovesWholeNumbersOnly) {
    RowNumbers list;
    list.Append({12, 2, 122});
    list.Remove({2});
    EXPECT_EQ(list.Text(), QStringLiteral("12,122,")) << "the 2 at the end of another number stays";
    list.Remove({7});
    EXPECT_EQ(list.Text(), QStringLiteral("12,122,"));
}

TEST(RowNumbersTest, HoldsEachNumberOnceInTheOrderTheyCame) {
    RowNumbers list;
    EXPECT_EQ(list.Text(), QString());
    list.Append({3, 1});
    list.Append({1, 2});
    EXPECT_EQ(list.Text(), QStringLiteral("3,1,2,"));
    EXPECT_EQ(RowNumbers::Joined(list.Numbers()), QStringLiteral("3,1,2"));
    list.Clear();
    EXPECT_TRUE(list.isEmpty());
}

} // namespace

} // namespace tessaro::test
