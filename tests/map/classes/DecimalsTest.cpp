#include "map/classes/Decimals.h"

#include <gtest/gtest.h>
#include <limits>

namespace tessaro {

TEST(DecimalsTest, RoundsAsWritten) {
    const struct {
        double value;
        int decimals;
        double halfEven;
        double halfUp;
        double down;
    } cases[] = {
        {2.5, 0, 2, 3, 2},
        {3.5, 0, 4, 4, 3},
        {-2.5, 0, -2, -3, -3},
        {-2.4, 0, -2, -2, -3},
        {1.25, 1, 1.2, 1.3, 1.2},
        {0.15, 1, 0.2, 0.2, 0.1}, // the binary number lies below
        {1.005, 2, 1, 1.01, 1},
        {2.675, 2, 2.68, 2.68, 2.67},
        {4111.45, 0, 4111, 4111, 4111},
        {9.995, 2, 10, 10, 9.99}, // 9.995 is a half between 9.99 and 10: even is 10.00
        {0.001, 1, 0, 0, 0},
        {-0.001, 1, 0, 0, -0.1},
        {1e-20, 2, 0, 0, 0},
        {-1e-20, 2, 0, 0, -0.01},
        {1e300, 2, 1e300, 1e300, 1e300},
        {123456789012345.6, 0, 123456789012346, 123456789012346, 123456789012346}, // the 16th digit is not written
        {0, 3, 0, 0, 0},
        {7, -1, 7, 7, 7},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(RoundHalfEven(c.value, c.decimals), c.halfEven) << c.value;
        EXPECT_EQ(RoundHalfUp(c.value, c.decimals), c.halfUp) << c.value;
        EXPECT_EQ(RoundDown(c.value, c.decimals), c.down) << c.value;
    }
    EXPECT_EQ(CutToDecimals(2.9, 0), 2);
    EXPECT_EQ(CutToDecimals(2.96, 1), 3);
    EXPECT_EQ(AsWritten(0.1 + 0.2), 0.3);
    const double infinite = std::numeric_limits<double>::infinity();
    EXPECT_EQ(RoundHalfUp(-infinite, 2), -infinite);
}

TEST(DecimalsTest, StepsOfTheLastDecimal) {
    const double steps[] = {1, 0.1, 0.01, 0.001};
    for (int decimals = 0; decimals < 4; ++decimals)
        EXPECT_EQ(StepOfDecimals(decimals), steps[decimals]);
    EXPECT_EQ(StepOfDecimals(-3), 1);
    EXPECT_GT(StepOfDecimals(1000000), 0);
}

} // namespace tessaro
