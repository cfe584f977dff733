#include "formats/NumberForm.h"

#include <gtest/gtest.h>

namespace tessaro::test {
namespace {

TEST(NumberFormTest, FindsTheSigns) {
    const struct {
        std::vector<std::string> texts;
        NumberForm form;
    } cases[] = {
        {{"1.5", "2"}, {'.', '\0'}},       {{"1,5", "2"}, {',', '\0'}},          {{"1,234.5", "2"}, {'.', ','}},
        {{"1.234,5", "2"}, {',', '.'}},    {{"1.234.567", "12"}, {',', '.'}},    {{"1,234,567", "12"}, {'.', ','}},
        {{"12,345", "1,234"}, {'.', ','}}, {{"1.234", "2.345"}, {'.', '\0'}},    {{"0,125", "2"}, {',', '\0'}},
        {{"1 234,5"}, {',', ' '}},         {{"1\u00A0234,5", "12"}, {',', ' '}}, {{"1'234.5"}, {'.', '\''}},
        {{"no number", ""}, {'.', '\0'}}};
    for (const auto& one : cases) {
        const NumberForm form = FindNumberForm(one.texts);
        EXPECT_EQ(form.decimal, one.form.decimal) << one.texts.front();
        EXPECT_EQ(form.thousands, one.form.thousands) << one.texts.front();
    }
}

TEST(NumberFormTest, ReadsNumbersAndNothingElse) {
    constexpr NumberForm point{'.', ','};
    constexpr NumberForm comma{',', '.'};
    constexpr NumberForm blank{',', ' '};
    const struct {
        NumberForm form;
        const char* text;
        const char* number; ///< nullptr: none
    } cases[] = {{point, "12.50", "12.50"},
                 {point, " -3 ", "-3"},
                 {point, "\u22123.5", "-3.5"},
                 {point, "1,234,567.8", "1234567.8"},
                 {point, "12,34,567", "1234567"},
                 {point, "1,23", nullptr},
                 {point, "1,2345", nullptr},
                 {point, ",123", nullptr},
                 {point, ".5", "0.5"},
                 {point, "5.", "5"},
                 {point, "1e3", "1e3"},
                 {point, "61.5%", "61.5"},
                 {point, "1.2.3", nullptr},
                 {point, "12a", nullptr},
                 {point, "=1+1", nullptr},
                 {point, "", nullptr},
                 {point, "-", nullptr},
                 {point, "nan", nullptr},
                 {point, "1e999", nullptr},
                 {point, "\u0661\u0662\u066B\u0665", "12.5"},
                 {comma, "1.234,5", "1234.5"},
                 {comma, "1.5", nullptr},
                 {blank, "1 234 567,5", "1234567.5"},
                 {blank, "1\u202F234", "1234"},
                 {blank, "12 34", nullptr}};
    for (const auto& one : cases) {
        const auto number = ReadNumberIn(one.text, one.form);
        EXPECT_EQ(number.value_or("none"), one.number != nullptr ? one.number : "none") << one.text;
    }
    for (const char* blankText : {"", "  ", "..", ":", "n/a", "NaN", "-", "N.A.", "…"})
        EXPECT_TRUE(MeansNoValue(blankText)) << blankText;
    for (const char* text : {"0", "-1", "none of your business", "1"})
        EXPECT_FALSE(MeansNoValue(text)) << text;
}

} // namespace
} // namespace tessaro::test
