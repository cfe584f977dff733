#include "session/DisplayValue.h"

#include <gtest/gtest.h>

namespace tessaro::test {

namespace {

TEST(DisplayValueTest, NumbersAreTold) {
    for (const char* number : {"0", "-1", "+2", "12.5", ".5", "5.", " 7 ", "00012", "123456789012345678901234567890",
                               "1e5", "2.86E-08", ".5e+3"})
        EXPECT_TRUE(ReadsAsNumber(QLatin1String(number))) << number;
    for (const char* text : {"", " ", "-", ".", "-.", "1,5", "1 000", "n/a", "12x", "1.2.3", "1e", "e5", "1e-", "1e5x",
                             "1e5.2", "<5", "--1"})
        EXPECT_FALSE(ReadsAsNumber(QLatin1String(text))) << text;
}

TEST(DisplayValueTest, DecimalsAreRoundedAwayFromZero) {
    EXPECT_EQ(WithDecimals(0.125, 2), QStringLiteral("0.13"));
    EXPECT_EQ(WithDecimals(-0.005, 2), QStringLiteral("-0.01"));
    EXPECT_EQ(WithDecimals(1e15, 0), QStringLiteral("1000000000000000"));
}

TEST(DisplayValueTest, SeparatorsOfTheUserAndEveryDigit) {
    const QLocale english(QLocale::English, QLocale::UnitedStates);
    const QLocale german(QLocale::German, QLocale::Germany);
    struct Case {
        const char* stored;
        const char* english;
        const char* german;
    };
    for (const Case& c :
         {Case{"1234567.50", "1,234,567.50", "1.234.567,50"}, Case{"-1234", "-1,234", "-1.234"},
          Case{"123", "123", "123"}, Case{"0.000", "0.000", "0,000"}, Case{".5", ".5", ",5"},
          Case{"12345678901234567890.1", "12,345,678,901,234,567,890.1", "12.345.678.901.234.567.890,1"},
          Case{"28625.1e-08", "28,625.1e-08", "28.625,1e-08"}, Case{"n/a", "n/a", "n/a"}, Case{"12x", "12x", "12x"},
          Case{"", "", ""}}) {
        EXPECT_EQ(WithSeparators(QLatin1String(c.stored), english), QLatin1String(c.english));
        EXPECT_EQ(WithSeparators(QLatin1String(c.stored), german), QLatin1String(c.german));
    }
}

TEST(DisplayValueTest, WhatIsDisplayedIsReadAsThatNumber) {
    const QLocale locales[] = {
        QLocale(QLocale::English, QLocale::UnitedStates), QLocale(QLocale::German, QLocale::Germany),
        QLocale(QLocale::French, QLocale::France),        QLocale(QLocale::Spanish, QLocale::Spain),
        QLocale(QLocale::Russian, QLocale::Russia),       QLocale(QLocale::Arabic, QLocale::Egypt)};
    for (const QLocale& locale : locales)
        for (const char* value :
             {"0", "0.125", "-0.125", "1.234", "12.345", "-1234.5", "1234567.891", "520000", "1e-07"})
            for (const bool separators : {false, true}) {
                const QString shown = separators ? InDigitsOf(locale, WithSeparators(QLatin1String(value), locale))
                                                 : QLatin1String(value);
                EXPECT_EQ(NumberTyped(shown, locale, separators), QString::fromLatin1(value).toDouble())
                    << locale.name().toStdString() << " " << shown.toStdString();
            }
}

TEST(DisplayValueTest, DigitsAreThoseOfTheLocale) {
    const QLocale arabic(QLocale::Arabic, QLocale::Egypt);
    EXPECT_EQ(InDigitsOf(arabic, WithSeparators(QStringLiteral("-1234.50"), arabic)), QString::fromUtf8("-١٬٢٣٤٫٥٠"));
    EXPECT_EQ(InDigitsOf(QLocale::c(), QStringLiteral("-1234.50")), QStringLiteral("-1234.50"));
}

TEST(DisplayValueTest, NumbersAreReadAsTheyAreTyped) {
    const QLocale english(QLocale::English, QLocale::UnitedStates);
    const QLocale german(QLocale::German, QLocale::Germany);
    const QLocale french(QLocale::French, QLocale::France);
    const struct {
        const char* text;
        const QLocale& locale;
        bool separators;
        std::optional<double> number;
    } cases[] = {
        {" -2.5 ", english, false, -2.5},
        {"1e3", english, true, 1000},
        {"1,234", english, false, 1234},
        {"0.125", german, true, 0.125},
        {"-0.125", german, true, -0.125},
        {"0,125", german, false, 0.125},
        {"1,234", german, false, 1.234},
        {"1.234", german, true, 1234},
        {"1.234", german, false, 1.234},
        {"1 234,5", french, true, 1234.5},
        {"1234,5", french, false, 1234.5},
        {"1..2", english, false, {}},
        {"", german, true, {}},
        {"abc", german, false, {}},
        {"5 apples", french, true, {}},
        {"inf", english, false, {}},
        {"nan", german, true, {}},
        {"1e999", english, true, {}},
        {"--1", english, false, {}},
    };
    for (const auto& c : cases)
        EXPECT_EQ(NumberTyped(QString::fromUtf8(c.text), c.locale, c.separators), c.number)
            << c.locale.name().toStdString() << " " << c.text;
}

} // namespace

} // namespace tessaro::test
