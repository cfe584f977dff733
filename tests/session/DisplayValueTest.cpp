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

} // namespace

} // namespace tessaro::test
