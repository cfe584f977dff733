#include "map/classes/ClassBreaks.h"

#include "map/ClassText.h"
#include "map/classes/BreakBounds.h"
#include "map/classes/Decimals.h"
#include "support/TimeBound.h"

#include <array>
#include <cmath>
#include <ctime>
#include <gtest/gtest.h>
#include <limits>
#include <random>

namespace tessaro {

namespace {

using test::Text;

using Values = std::vector<double>;

/// Employees per square kilometre in the counties of California (US Census Bureau, Economic Census), the table for
/// which libraries of classification publish their answers.
const Values kEmployment = SortedValues(
    {329.92, 0.42, 5.9,   14.03,  2.78,  1.34,  181.27, 1.65,    10.03, 16.7,  1.32,   3.99,  3.16,   0.22,  8.7,
     6.56,   3.27, 0.33,  370.5,  4.51,  75.29, 0.99,   2.74,    8.68,  0.14,  0.92,   12.63, 28.7,   12.02, 722.85,
     36.68,  0.74, 29.82, 192.05, 3.38,  11.15, 110.74, 4111.45, 49.47, 10.33, 317.11, 20.47, 264.93, 66.26, 5.39,
     0.13,   0.61, 50.65, 40.48,  36.67, 13.09, 1.81,   0.2,     7.6,   2.51,  57.26,  24.32, 6.97});

ClassBreaks ClassesOf(const Values& ascending, BreakMethod method, int classes, int decimals) {
    ClassRequest request{method, classes, decimals};
    if (!ascending.empty()) SetRange(request, ascending.front(), ascending.back());
    return ComputeClasses(ascending, request);
}

std::vector<int> Counts(const Values& ascending, Values bounds) {
    bounds.push_back(std::numeric_limits<double>::infinity());
    std::vector<int> counts;
    std::size_t before = 0;
    for (const double bound : bounds) {
        const auto upTo =
            static_cast<std::size_t>(std::upper_bound(ascending.begin(), ascending.end(), bound) - ascending.begin());
        counts.push_back(static_cast<int>(upTo - before));
        before = upTo;
    }
    return counts;
}

double SquaresWithin(const Values& ascending, const Values& bounds) {
    double sum = 0;
    std::size_t first = 0;
    for (const int count : Counts(ascending, bounds)) {
        const auto begin = ascending.begin() + static_cast<std::ptrdiff_t>(first);
        double mean = 0;
        for (auto value = begin; value != begin + count; ++value)
            mean += *value / count;
        for (auto value = begin; value != begin + count; ++value)
            sum += (*value - mean) * (*value - mean);
        first += static_cast<std::size_t>(count);
    }
    return sum;
}

constexpr std::array kMethods{BreakMethod::EqualCount,        BreakMethod::EqualSize, BreakMethod::NaturalBreaks,
                              BreakMethod::StandardDeviation, BreakMethod::Pretty,    BreakMethod::Geometric};

} // namespace

TEST(ClassBreaksTest, EqualCountAndEqualSize) {
    const Values storms = SortedValues([] {
        Values values(33, 0.0);
        const Values more{1, 1, 1, 2, 2, 3, 5, 6, 10, 11, 17, 18, 21, 27, 30, 51, 60, 66, 110};
        values.insert(values.end(), more.begin(), more.end());
        return values;
    }());
    const struct {
        const char* what;
        Values values;
        int classes;
        int decimals;
        const char* count;
        const char* size;
    } cases[] = {
        {"employment", kEmployment, 5, 2,
         "0.13-1.34 (12) 1.35-5.90 (12) 5.91-14.03 (12) 14.04-57.26 (11) 57.27-4111.45 (11)",
         "0.13-822.39 (57) 822.40-1644.66 (0) 1644.67-2466.93 (0) 2466.94-3289.20 (0) 3289.21-4111.45 (1)"},
        {"four classes", kEmployment, 4, 2, "0.13-2.51 (15) 2.52-10.03 (15) 10.04-40.48 (14) 40.49-4111.45 (14)",
         "0.13-1027.96 (57) 1027.97-2055.80 (0) 2055.81-3083.64 (0) 3083.65-4111.45 (1)"},
        {"fewer decimals than the data's", kEmployment, 5, 0, "0-1 (12) 2-5 (10) 6-13 (10) 14-50 (10) 51-4111 (11)",
         "0-822 (57) 823-1645 (0) 1646-2468 (0) 2469-3291 (0) 3292-4111 (0)"},
        {"many equal values", storms, 5, 0, "0-0 (33) 1-2 (5) 1-2 (5) 3-10 (4) 11-110 (10)",
         "0-22 (46) 23-45 (2) 46-68 (3) 69-91 (0) 92-110 (1)"},
        {"fewer values than classes",
         {1, 2, 7},
         5,
         0,
         "1-1 (1) 2-2 (1) 3-7 (1) 7-7 (1) 7-7 (1)",
         "1-2 (2) 3-4 (0) 5-6 (0) 7-7 (1) 7-7 (1)"},
        {"one value thrice", {5, 5, 5}, 4, 0, "5-5 (3) 5-5 (3) 5-5 (3) 5-5 (3)", "5-5 (3) 5-5 (3) 5-5 (3) 5-5 (3)"},
        {"one class", {1, 2, 7}, 1, 0, "1-7 (3)", "1-7 (3)"},
        {"one value", {4.5}, 2, 1, "4.5-4.5 (1) 4.5-4.5 (1)", "4.5-4.5 (1) 4.5-4.5 (1)"},
        {"none", {}, 2, 0, "0-0 (0) 0-0 (0)", "0-0 (0) 0-0 (0)"},
        {"negative", {-9.5, -3, -1, 0, 4}, 2, 1, "-9.5--1.0 (3) -0.9-4.0 (2)", "-9.5--2.7 (2) -2.6-4.0 (3)"},
        {"tenths that are no binary numbers",
         {0.1, 0.2, 0.3, 0.4},
         4,
         1,
         "0.1-0.1 (1) 0.2-0.2 (1) 0.3-0.3 (1) 0.4-0.4 (1)",
         "0.1-0.2 (2) 0.3-0.4 (2) 0.4-0.4 (1) 0.4-0.4 (1)"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(Text(ClassesOf(c.values, BreakMethod::EqualCount, c.classes, c.decimals), c.decimals), c.count)
            << c.what;
        EXPECT_EQ(Text(ClassesOf(c.values, BreakMethod::EqualSize, c.classes, c.decimals), c.decimals), c.size)
            << c.what;
    }
}

TEST(ClassBreaksTest, TellsHowManyValuesNoClassHolds) {
    EXPECT_EQ(CountOutsideClasses(kEmployment, ClassesOf(kEmployment, BreakMethod::EqualCount, 5, 2)), 0);
    const ClassBreaks coarse = ClassesOf(kEmployment, BreakMethod::EqualCount, 5, 0);
    EXPECT_EQ(CountOutsideClasses(kEmployment, coarse), 9);
    const std::vector<double> between{5.5, 13.5, 50.5, 4111.5};
    for (const double value : between)
        EXPECT_EQ(ClassOf(coarse, value), -1) << value;
    EXPECT_EQ(CountOutsideClasses(kEmployment, ClassesOf(kEmployment, BreakMethod::EqualSize, 5, 0)), 1);
    // The lower class gets a value of both.
    const ClassBreaks tied = ClassesOf({1, 2, 7}, BreakMethod::EqualCount, 5, 0);
    EXPECT_EQ(ClassOf(tied, 7), 2);
    EXPECT_EQ(ClassOf({}, 7), -1);
}

TEST(ClassBreaksTest, PublishedAnswers) {
    const Values natural = NaturalBreakBounds(kEmployment, 5);
    EXPECT_EQ(natural, (Values{75.29, 192.05, 370.5, 722.85}));
    EXPECT_EQ(Counts(kEmployment, natural), (std::vector<int>{49, 3, 4, 1, 1}));
    const Values deviations = StandardDeviationBounds(kEmployment, 5);
    const double expected[] = {-967.362, -420.717, 672.573, 1219.219};
    ASSERT_EQ(deviations.size(), 4U);
    for (std::size_t i = 0; i < 4; ++i)
        EXPECT_NEAR(deviations[i], expected[i], 0.001);
    EXPECT_EQ(Counts(kEmployment, deviations), (std::vector<int>{0, 0, 56, 1, 1}));
    EXPECT_EQ(PrettyBounds(kEmployment, 5), (Values{1000, 2000, 3000, 4000}));
}

TEST(ClassBreaksTest, NaturalBreaksAreTheBestOfAll) {
    std::mt19937 random(7);
    for (int round = 0; round < 40; ++round) {
        Values values;
        for (int i = 0; i < 14; ++i)
            values.push_back(static_cast<double>(random() % 40) / 4);
        values = SortedValues(values);
        double best = std::numeric_limits<double>::infinity();
        for (const double low : values)
            for (const double high : values)
                if (low < high && high < values.back()) best = std::min(best, SquaresWithin(values, {low, high}));
        EXPECT_NEAR(SquaresWithin(values, NaturalBreakBounds(values, 3)), best, 1e-9);
    }
}

TEST(ClassBreaksTest, FurtherMethodsGiveClassesThatLoseNothing) {
    const struct {
        BreakMethod method;
        const char* text;
    } cases[] = {
        {BreakMethod::NaturalBreaks,
         "0.13-75.29 (49) 75.30-192.05 (3) 192.06-370.50 (4) 370.51-722.85 (1) 722.86-4111.45 (1)"},
        {BreakMethod::StandardDeviation, "0.13-672.57 (56) 672.58-1219.21 (1) 1219.22-4111.45 (1)"},
        {BreakMethod::Pretty,
         "0.13-1000.00 (57) 1000.01-2000.00 (0) 2000.01-3000.00 (0) 3000.01-4000.00 (0) 4000.01-4111.45 (1)"},
        {BreakMethod::Geometric, "0.13-1.03 (10) 1.04-8.20 (17) 8.21-65.15 (20) 65.16-517.58 (9) 517.59-4111.45 (2)"},
    };
    for (const auto& c : cases) {
        const ClassBreaks classes = ClassesOf(kEmployment, c.method, 5, 2);
        EXPECT_EQ(Text(classes, 2), c.text);
        EXPECT_EQ(CountOutsideClasses(kEmployment, classes), 0);
    }
}

TEST(ClassBreaksTest, GeometricBoundsOfAnySign) {
    const struct {
        Values values;
        Values bounds;
    } cases[] = {{{1, 1000}, {10, 100}}, {{-1000, -1}, {-100, -10}}, {{0, 26}, {2, 8}}, {{-5, 21}, {-3, 3}}};
    for (const auto& c : cases) {
        const Values bounds = GeometricBounds(c.values, 3);
        ASSERT_EQ(bounds.size(), 2U);
        for (std::size_t i = 0; i < 2; ++i)
            EXPECT_NEAR(bounds[i], c.bounds[i], 1e-9) << c.values.front();
    }
}

// What holds for any values: classes go up from the range's start to its end, and counts are those of the values.
TEST(ClassBreaksTest, EveryMethodEnduresAnyValues) {
    const double huge = std::numeric_limits<double>::max();
    const Values lists[] = {
        {}, {0}, {5, 5, 5}, {1, 2}, {-1e300, 1e300}, {-huge, huge}, {1e-300, 2e-300}, {0.1, 0.2, 0.3}, kEmployment};
    for (const BreakMethod method : kMethods) {
        for (const Values& values : lists) {
            for (const int classes : {-5, 0, 1, 3, 7, 100000}) {
                for (const int decimals : {-1, 0, 2, 20}) {
                    const ClassBreaks made = ClassesOf(values, method, classes, decimals);
                    ASSERT_FALSE(made.empty());
                    ASSERT_LE(made.size(), static_cast<std::size_t>(kMostClasses) + 1);
                    for (const ClassBreak& each : made) {
                        EXPECT_LE(each.count, static_cast<int>(values.size()));
                        EXPECT_FALSE(std::isnan(each.from) || std::isnan(each.to));
                    }
                }
            }
        }
    }
    const double nothing = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(SortedValues({nothing, 2, std::numeric_limits<double>::infinity(), 1}), (Values{1, 2}));
    for (const BreakMethod method : kMethods) {
        EXPECT_TRUE(ComputeClasses({1, 2}, {method, 3, 0, 5, 1}).empty());
        EXPECT_TRUE(ComputeClasses({1, 2}, {method, 3, 0, nothing, 1}).empty());
    }
}

TEST(ClassBreaksTest, ATypedRangeLeavesOutWhatIsBeyond) {
    ClassRequest request{BreakMethod::EqualCount, 2, 0};
    SetRange(request, 2.5, 8.5);
    EXPECT_EQ(request.minimum, 2);
    EXPECT_EQ(request.maximum, 8);
    const Values values{1, 2, 3, 4, 5, 6, 7, 8, 9};
    EXPECT_EQ(Text(ComputeClasses(values, request), 0), "2-5 (4) 6-8 (3)");
    EXPECT_EQ(CountOutsideClasses(values, ComputeClasses(values, request)), 2);
}

TEST(ClassBreaksTest, IsQuick) {
    std::mt19937 random(3);
    Values many;
    for (int i = 0; i < 100000; ++i)
        many.push_back(static_cast<double>(random() % 1000000) / 100);
    std::clock_t start = std::clock(); // of the processor
    const auto milliseconds = [&start] { return (std::clock() - start) * 1000 / CLOCKS_PER_SEC; };
    const Values ascending = SortedValues(many);
    for (const BreakMethod method : {BreakMethod::EqualCount, BreakMethod::EqualSize})
        EXPECT_EQ(CountOutsideClasses(ascending, ClassesOf(ascending, method, 5, 2)), 0);
    EXPECT_LT(milliseconds(), test::TimeBound(300));
    start = std::clock();
    EXPECT_EQ(NaturalBreakBounds(Values(ascending.begin(), ascending.begin() + 3000), 5).size(), 4U);
    EXPECT_LT(milliseconds(), test::TimeBound(100));
}

} // namespace tessaro
