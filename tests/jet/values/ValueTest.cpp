#include "jet/values/Value.h"

#include <cmath>
#include <cstdlib>
#include <gtest/gtest.h>
#include <limits>

namespace jet {
namespace {

TEST(ReadNumber, RefusesWhatIsNoNumber) {
    for (const char* text : {"", " ", "abc", "1,5", "1.2.3", "- 1", "+-1", "inf", "nan", "-inf", "0x10", "1e", "1e999",
                             ".", "-", "12abc", "\xC2\xBD"})
        EXPECT_FALSE(ReadNumber(text)) << text;
}

TEST(ReadNumber, ReadsDecimalText) {
    const std::pair<const char*, double> cases[] = {
        {"0", 0},      {"64", 64},     {" 64 ", 64},   {"-0.25", -0.25}, {"+7", 7},     {".5", 0.5}, {"5.", 5},
        {"1e3", 1000}, {"1E-2", 0.01}, {"\t3\r\n", 3}, {"-.5", -0.5},    {"1e-999", 0}, {"007", 7}};
    for (const auto& [text, number] : cases)
        EXPECT_EQ(ReadNumber(text), number) << text;
}

TEST(ReadNumber, GivesTheNearestDoubleForEveryLength) {
    for (const char* text :
         {"0.1", "0.3", "-1234.567", "999999999999999", "0.99999999999999", "99999999999999.9", "000000000000001",
          "123456789012345.6", "9007199254740993", "0.000000000000001", "0.12345678901234567", "-0.07", "5.", "-.35"})
        EXPECT_EQ(ReadNumber(text), std::strtod(text, nullptr)) << text;
    EXPECT_TRUE(std::signbit(ReadNumber("-0").value()));
    for (const char* text : {"-.", "..5", "1..", "1-", "--1", "1.2.", "12,5", "1:", "/1"})
        EXPECT_FALSE(ReadNumber(text)) << text;
}

TEST(ShortestText, ReadsBackAndHasNoNeedlessDigits) {
    const std::pair<double, const char*> cases[] = {{64, "64"},           {0.25, "0.25"},
                                                    {-1, "-1"},           {0.1, "0.1"},
                                                    {-0.0, "0"},          {123456789012345.0, "123456789012345"},
                                                    {1e15, "1E+15"},      {1e-15, "0.000000000000001"},
                                                    {2.5e-16, "2.5E-16"}, {1.0 / 3, "0.3333333333333333"}};
    for (const auto& [number, text] : cases) {
        EXPECT_EQ(ShortestText(number), text);
        EXPECT_EQ(ReadNumber(ShortestText(number)), number) << text;
    }
}

TEST(Value, WholeNumbersRoundHalfToEvenAndStayInRange) {
    const std::pair<Value, std::int64_t> cases[] = {
        {Value(2.5), 2},
        {Value(3.5), 4},
        {Value(-2.5), -2},
        {Value("2.5"), 2},
        {Value(), 0},
        {Value("abc"), 0},
        {Value(1e300), std::numeric_limits<std::int64_t>::max()},
        {Value(-1e300), std::numeric_limits<std::int64_t>::min()},
        {Value("9007199254740993"), 9007199254740993}, // not by way of a double
        {Value(std::nan("")), 0}};
    for (const auto& [value, whole] : cases)
        EXPECT_EQ(value.toInteger(), whole) << value.toText();
}

TEST(Value, TruthOfTexts) {
    for (const Value& value :
         {Value(), Value(0), Value(0.0), Value("0"), Value("0.00"), Value("False"), Value("FALSE"), Value("")})
        EXPECT_FALSE(value.toBoolean()) << value.toText();
    for (const Value& value : {Value(-1), Value(1), Value(0.5), Value("True"), Value("-1")})
        EXPECT_TRUE(value.toBoolean()) << value.toText();
}

} // namespace
} // namespace jet
