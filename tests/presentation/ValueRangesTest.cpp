#include "presentation/ValueRanges.h"

#include "PresentationTest.h"

namespace tessaro {

namespace {

class ValueRangesTest : public test::PresentationTest {
  protected:
    /// Population values of one area each period; all other data goes.
    ColorRanges WithValues(const QStringList& values) {
        Run(QStringLiteral("DELETE * FROM Data"));
        if (!selected_) SelectEverything();
        selected_ = true;
        int area = 0;
        for (const QString& value : values)
            AddValue(1 + area % 3, 1, 1 + area / 3 % 4, 1 + area / 12 % 2, value), ++area;
        const auto records = InitColorRanges();
        return records.size() == 1 ? records.front() : ColorRanges();
    }
    bool selected_ = false;
};

QString Texts(const ColorRanges& record) {
    QStringList texts;
    for (const ValueRange& range : record.Ranges)
        texts << QStringLiteral("%1:%2").arg(range.Text()).arg(range.Count);
    return texts.join(QStringLiteral(" | "));
}

} // namespace

TEST(CutByCountTest, NeverPartsEqualValues) {
    const struct {
        const char* what;
        std::vector<double> values;
        std::vector<int> counts;
    } cases[] = {
        {"nothing", {}, {0, 0, 0}},
        {"one value", {5}, {1, 0, 0}},
        {"two", {1, 2}, {1, 1, 0}},
        {"three", {1, 2, 3}, {1, 1, 1}},
        {"all equal", {4, 4, 4, 4, 4}, {5, 0, 0}},
        {"4th to 6th of twelve equal", {1, 2, 3, 4, 4, 4, 5, 6, 7, 8, 9, 10}, {6, 3, 3}},
        {"ten", {1, 2, 3, 4, 5, 6, 7, 8, 9, 10}, {3, 3, 4}},
        {"ties at the second cut", {1, 2, 3, 4, 4, 4}, {2, 4, 0}},
    };
    for (const auto& c : cases) {
        const auto cuts = CutByCount(c.values);
        std::vector<int> counts;
        for (const ValueCut& cut : cuts)
            counts.push_back(cut.count);
        EXPECT_EQ(counts, c.counts) << c.what;
    }
}

TEST_F(ValueRangesTest, EqualSizeLeavesGapsOfOneStep) {
    ColorRanges record = WithValues({QStringLiteral("0.00"), QStringLiteral("3.33"), QStringLiteral("3.335"),
                                     QStringLiteral("6.68"), QStringLiteral("10")});
    ASSERT_EQ(record.IndicatorGId, QStringLiteral("-POP"));
    EXPECT_EQ(record.Decimals, 3);
    record.Decimals = 2;
    record.Method = RangeMethod::EqualSize;
    CutRanges(record);
    EXPECT_EQ(Texts(record).toStdString(), "0.00 - 3.33:2 | 3.34 - 6.67:0 | 6.68 - 10.00:2");
    record.HighIsGood = false;
    const std::pair<double, int> lookups[] = {{0, 35},  {3.33, 35},  {3.335, -1}, {5, 36},
                                              {10, 37}, {10.01, -1}, {-1, -1}};
    for (const auto& [value, slot] : lookups)
        EXPECT_EQ(record.SlotOf(value), slot) << value;
    record.HighIsGood = true;
    EXPECT_EQ(record.SlotOf(0), 37);
    EXPECT_EQ(record.SlotOf(5), 36);
    EXPECT_EQ(record.SlotOf(10), 35);
}

TEST_F(ValueRangesTest, WholeNumbers) {
    ColorRanges record =
        WithValues({QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("9"), QStringLiteral("10")});
    EXPECT_EQ(record.Decimals, 0);
    EXPECT_EQ(Texts(record).toStdString(), "1 - 1:1 | 2 - 2:1 | 9 - 10:2");
    GetEqualSizeIntervals(record);
    EXPECT_EQ(Texts(record).toStdString(), "1 - 4:2 | 5 - 8:0 | 9 - 10:2");
}

TEST_F(ValueRangesTest, FewOrEqualValues) {
    ColorRanges record = WithValues({QStringLiteral("7"), QStringLiteral("7"), QStringLiteral("7")});
    EXPECT_EQ(record.Ranges[0], (ValueRange{QStringLiteral("7"), QStringLiteral("7"), 3}));
    EXPECT_EQ(record.Ranges[1], ValueRange());
    EXPECT_EQ(record.SlotOf(7), 37);
    GetEqualSizeIntervals(record);
    EXPECT_EQ(Texts(record).toStdString(), "7 - 7:3 | 7 - 7:0 | 7 - 7:0");

    EXPECT_TRUE(WithValues({}).IndicatorGId.isEmpty());
    EXPECT_TRUE(InitColorRanges().empty());
}

TEST(ColorRangesTest, TheFirstAndLastLimitHoldForAllThree) {
    ColorRanges record;
    record.HighIsGood = false;
    record.Ranges = {ValueRange{QStringLiteral("10"), QStringLiteral("20"), 0},
                     ValueRange{QStringLiteral("5"), QStringLiteral("45"), 0},
                     ValueRange{QStringLiteral("30"), QStringLiteral("40"), 0}};
    const std::pair<double, int> lookups[] = {{9, -1}, {10, 35}, {25, 36}, {35, 36}, {40, 36}, {41, -1}};
    for (const auto& [value, slot] : lookups)
        EXPECT_EQ(record.SlotOf(value), slot) << value;
    record.Ranges[2] = {}; // too few values for three ranges
    EXPECT_EQ(record.SlotOf(45), 36);
    EXPECT_EQ(record.SlotOf(46), -1);
}

TEST_F(ValueRangesTest, UnreadableValuesStayOutside) {
    ColorRanges record = WithValues({QStringLiteral("n.a."), QStringLiteral("0.4"), QStringLiteral("2"),
                                     QStringLiteral("3.5"), QStringLiteral("zzz")});
    EXPECT_EQ(record.MinValue, QStringLiteral("0.4"));
    EXPECT_EQ(record.MaxValue, QStringLiteral("3.5"));
    EXPECT_EQ(Texts(record).toStdString(), "0.4 - 0.4:1 | 2.0 - 2.0:1 | 3.5 - 3.5:1");
    record.Decimals = 0; // 0.4 rounds to nothing that reads as a number
    GetEqualCountIntervals(record);
    EXPECT_EQ(Texts(record).toStdString(), "0 - 0:1 | 2 - 2:1 | 4 - 4:1");
    record = WithValues({QStringLiteral("n.a.")});
    EXPECT_TRUE(record.Ranges[0].Text().isEmpty());
    EXPECT_EQ(record.SlotOf(1), -1);
}

TEST_F(ValueRangesTest, CountsWithinTypedLimits) {
    const ColorRanges record =
        WithValues({QStringLiteral("1"), QStringLiteral("2.5"), QStringLiteral("10"), QStringLiteral("-3")});
    const struct {
        const char* from;
        const char* to;
        int count;
    } cases[] = {{"-3", "10", 4}, {"1", "2.5", 2}, {"3", "9", 0}, {"", "5", 0}, {"x", "5", 0}, {"5", "'); DROP", 0}};
    for (const auto& c : cases)
        EXPECT_EQ(GetRangeCount(record, QLatin1String(c.from), QLatin1String(c.to)), c.count) << c.from << " " << c.to;
}

TEST(ColorNumberTest, SplitsBlueHigh) {
    int red = 0;
    int green = 0;
    int blue = 0;
    GetRGB(0x0A1420, red, green, blue);
    EXPECT_EQ(red, 0x20);
    EXPECT_EQ(green, 0x14);
    EXPECT_EQ(blue, 0x0A);
}

TEST(DecimalsTest, Formats) {
    EXPECT_EQ(GetFormatString(2), QStringLiteral("#0.00"));
    EXPECT_EQ(GetFormatString(-1), QStringLiteral("#.0"));
}

} // namespace tessaro
