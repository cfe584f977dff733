#include "map/classes/ClassEditing.h"

#include "map/classes/BreakChoices.h"
#include "map/classes/ClassColors.h"
#include "map/classes/ClassLabels.h"
#include "session/Session.h"

#include <gtest/gtest.h>
#include <limits>

namespace tessaro {

namespace {

const std::vector<double> kValues{1, 2, 3, 4, 5, 6, 7, 8, 9};

/// 1-3, 4-6, 7-9
ClassBreaks ThreeClasses() {
    return ComputeClasses(kValues, {BreakMethod::EqualCount, 3, 0, 1, 9});
}

std::string Text(const ClassBreaks& classes) {
    QStringList texts;
    for (const ClassBreak& each : classes)
        texts << BoundText(each.from, 0) + QLatin1Char('-') + BoundText(each.to, 0) +
                     QStringLiteral(" (%1)").arg(each.count);
    return texts.join(QLatin1Char(' ')).toStdString();
}

} // namespace

TEST(ClassEditingTest, BoundsInEachMode) {
    constexpr auto from = Bound::From;
    constexpr auto to = Bound::To;
    constexpr auto continuous = BreakChoice::Continuous;
    constexpr auto discontinuous = BreakChoice::Discontinuous;
    const char* const before = "1-3 (3) 4-6 (3) 7-9 (3)";
    const struct {
        BreakChoice choice;
        int row;
        Bound bound;
        double value;
        const char* text;
    } cases[] = {
        {BreakChoice::EqualCount, 0, to, 2, before},
        {BreakChoice::EqualSize, 0, to, 2, before},
        {BreakChoice::Pretty, 0, to, 2, before},
        {continuous, 0, from, 0, before},
        {continuous, 0, to, 2, "1-2 (2) 3-6 (4) 7-9 (3)"},
        {continuous, 0, to, 5, "1-5 (5) 6-6 (1) 7-9 (3)"},
        {continuous, 0, to, 6, before}, // nothing would be left of the next class
        {continuous, 1, to, 3, before}, // ends before it begins
        {continuous, 2, to, 20, "1-3 (3) 4-6 (3) 7-20 (3)"},
        {continuous, 0, to, 2.5, "1-2.5 (2) 3.5-6 (3) 7-9 (3)"},
        {discontinuous, 0, to, 2, "1-2 (2) 4-6 (3) 7-9 (3)"},
        {discontinuous, 0, to, 4, before}, // the next class has it
        {discontinuous, 1, from, 5, "1-3 (3) 5-6 (2) 7-9 (3)"},
        {discontinuous, 1, from, 3, before},
        {discontinuous, 1, from, 7, before},
        {discontinuous, 0, from, -5, "-5-3 (3) 4-6 (3) 7-9 (3)"},
        {discontinuous, 3, to, 9, before},
        {discontinuous, -1, to, 9, before},
        {discontinuous, 2, to, std::numeric_limits<double>::quiet_NaN(), before},
    };
    for (const auto& c : cases) {
        ClassBreaks classes = ThreeClasses();
        const bool edited = EditBound(classes, c.row, c.bound, c.value, c.choice, 0, kValues);
        EXPECT_EQ(Text(classes), c.text) << c.row << " " << c.value;
        EXPECT_EQ(edited, std::string(c.text) != before);
    }
}

TEST(ClassEditingTest, TheNextClassBeginsAtTheWrittenStep) {
    ClassBreaks classes = ComputeClasses({0.1, 0.2, 0.3, 0.9}, {BreakMethod::EqualCount, 2, 1, 0.1, 0.9});
    ASSERT_TRUE(EditBound(classes, 0, Bound::To, 0.2, BreakChoice::Continuous, 1, {0.1, 0.2, 0.3, 0.9}));
    EXPECT_EQ(classes[1].from, 0.3); // 0.2 + 0.1 is a little more in binary numbers
    EXPECT_EQ(classes[1].count, 2);
}

TEST(BreakChoicesTest, StandInTheirOrder) {
    int place = 0;
    for (const BreakChoiceTexts& each : BreakChoices()) {
        EXPECT_EQ(static_cast<int>(each.choice), place++); // the index in the list is the choice
        EXPECT_EQ(ComputesClasses(each.choice), !MayEdit(each.choice, Bound::To)) << each.caption;
    }
    EXPECT_EQ(place, 8);
}

TEST(ClassLabelsTest, Numbers) {
    const struct {
        double value;
        int decimals;
        const char* text;
    } cases[] = {{2.9, 0, "2"},
                 {-2.4, 0, "-3"},
                 {1.25, 1, "1.3"},
                 {7, 2, "7.00"},
                 {-0.3, 0, "-1"},
                 {-0.001, 1, "0.0"},
                 {1234567.5, 1, "1234567.5"},
                 {3, -2, "3"}};
    for (const auto& c : cases)
        EXPECT_EQ(FormatDecimals(c.value, c.decimals).toStdString(), c.text) << c.value;
    SysNumFormat = false;
    EXPECT_EQ(LegendOf({1, 2.5, 0, 0, 0}, 1).toStdString(), "1.0 - 2.5");
}

TEST(ClassColorsTest, Ramp) {
    EXPECT_EQ(RampColors(QColor(0, 100, 255), QColor(255, 100, 0), 3),
              (std::vector<QColor>{QColor(0, 100, 255), QColor(128, 100, 128), QColor(255, 100, 0)}));
    EXPECT_EQ(RampColors(Qt::red, Qt::blue, 1), std::vector<QColor>{QColor(Qt::red)});
    EXPECT_TRUE(RampColors(Qt::red, Qt::blue, -1).empty());
    EXPECT_EQ(ClassColor(Qt::black), QColor(0, 0, 1));
    EXPECT_EQ(ClassColor(QColor(0, 0, 2)), QColor(0, 0, 2));
}

} // namespace tessaro
