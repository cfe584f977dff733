#include "calculate/Numbers.h"

#include "session/DisplayValue.h"

#include <QLocale>

#include <gtest/gtest.h>

namespace tessaro {

TEST(NumbersTest, ResultsHaveTheDecimalsAsked) {
    const struct {
        const char* value;
        const char* decimals;
        const char* expected;
    } cases[] = {
        {"0.5", "2", ".50"},
        {"-0.5", "2", "-.50"},
        {"0.5", "0", "1"},
        {"2.5", "0", "3"},
        {"2.4999", "0", "2"},
        {"1234.567", "1", "1234.6"},
        {"100", "2", "100.00"},
        {"0", "2", ".00"},
        {"1e-300", "2", ".00"},
        {"12.25", "", "12.25"},
        {"12.25", "x", "12.25"},
        {"12.25", "-1", "12"},
        {"n/a", "2", "n/a"},
        {"", "2", ""},
        {"1e3", "1", "1000.0"},
        {"0.005", "2", ".01"},
        {"3.6214999999999993", "3", "3.622"}, // the halves of sums and products
        {"-191.39499999999998", "2", "-191.40"},
        {"2.4949999999999", "2", "2.49"},
        {"3.4999999999999996", "0", "3"},
        {"1.5", "99", "1.500000000000000"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(FormatToDecimals(QString::fromLatin1(c.value), QString::fromLatin1(c.decimals)).toStdString(),
                  c.expected)
            << c.value << " to " << c.decimals;
    EXPECT_EQ(FormatToDecimals(QStringLiteral("1e300"), QStringLiteral("0")).size(), 301);
}

TEST(NumbersTest, TypedNumbersTakeTheMarkOfTheSystem) {
    const QLocale system = QLocale::system();
    const QString typed = QStringLiteral("1") + system.decimalPoint() + QStringLiteral("5");
    EXPECT_EQ(ToDotDecimal(typed), QStringLiteral("1.5"));
    EXPECT_EQ(NumberTyped(typed), 1.5);
    EXPECT_EQ(NumberTyped(system.toString(-2.25, 'f', 2)), -2.25) << system.toString(-2.25, 'f', 2).toStdString();
    EXPECT_EQ(NumberTyped(QStringLiteral(" 1.5 ")), 1.5);
    EXPECT_EQ(NumberTyped(QStringLiteral("٣٫٥")).value_or(3.5), 3.5);
    EXPECT_EQ(ToDotDecimal({}), QStringLiteral("0"));
    for (const char* none : {"", "  ", "abc", "1.2.3", "nan", "inf", "1e999", "0x10"})
        EXPECT_FALSE(NumberTyped(QString::fromLatin1(none))) << none;
}

} // namespace tessaro
