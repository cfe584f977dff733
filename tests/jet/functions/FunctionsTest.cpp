#include "jet/functions/Functions.h"

#include "jet/engine/Sqlite.h"
#include "jet/values/Format.h"

#include <gtest/gtest.h>
#include <string>

namespace jet {
namespace {

TEST(FormattedNumber, IsTheNumberThatTheFormattedTextReadsAs) {
    for (const char* mask : {"#", "#0", "#0.", "#0.0", "#0.00", "#.0", "0.000000000000000", "#,##0.00", "0%",
                             "0;-0.0;0", "Standard", "Fixed", "yyyy", "", "\"x\"0", "(0)"})
        for (const Value& value :
             {Value("12.5"), Value("12.345"), Value("-0.001"), Value("0"), Value("-0"), Value("0.4"), Value("2.675"),
              Value(" 64.0 "), Value("1e20"), Value("999999999999999.5"), Value("N/A"), Value(""), Value(), Value(-7),
              Value(0.1 + 0.2), Value(123456789.12), Value(1e-20)})
            EXPECT_EQ(FormattedNumber(value, mask), ReadNumber(Format(value, mask))) << value.toText() << " / " << mask;
}

class FunctionsTest : public ::testing::Test {
  protected:
    FunctionsTest() {
        sqlite3* raw = nullptr;
        sqlite3_open(":memory:", &raw);
        database.reset(raw);
        RegisterFunctions(raw);
    }
    // the value as text, "Null", or "error" and its number
    [[nodiscard]] std::string Of(const std::string& expression) const {
        try {
            const Value value = Rows(database.get(), "SELECT " + expression).at(0).at(0);
            return value.isNull() ? "Null" : value.toText();
        } catch (const Error& error) {
            if (error.number() == ErrorNumber::TypeMismatch) return "mismatch";
            if (error.number() == ErrorNumber::DivisionByZero) return "division";
            return error.what();
        }
    }
    struct Case {
        const char* expression;
        const char* result;
    };
    void Check(std::initializer_list<Case> cases) const {
        for (const Case& each : cases)
            EXPECT_EQ(Of(each.expression), each.result) << each.expression;
    }

    Handle database;
};

TEST_F(FunctionsTest, TextByPosition) {
    Check({{"jet_mid('abc', 2)", "bc"},
           {"jet_mid('abc', 1, 1)", "a"},
           {"jet_mid('abc', 9, 1)", ""},
           {"jet_mid('abc', 0, 1)", "Null"},
           {"jet_mid('ab', 1, -1)", "Null"},
           {"jet_mid('éàü', 2, 1)", "à"},
           {"jet_mid(Null, 1, 1)", "Null"},
           {"jet_mid(12.5, 3)", ".5"},
           {"jet_len('')", "0"},
           {"jet_len('日本é')", "3"},
           {"jet_len(Null)", "Null"},
           {"jet_len(0.1)", "3"},
           {"jet_left('日本', 1)", "日"},
           {"jet_left('ab', 5)", "ab"},
           {"jet_right('日本é', 2)", "本é"},
           {"jet_right('ab', 5)", "ab"},
           {"jet_right('ab', 0)", ""},
           {"jet_trim('  a b ')", "a b"},
           {"jet_ltrim('  a ')", "a "},
           {"jet_rtrim('  a ')", "  a"},
           {"jet_strreverse('aé日')", "日éa"},
           {"jet_string(3, '日本')", "日日日"},
           {"jet_string(2, 65)", "AA"},
           {"jet_space(2)", "  "},
           {"jet_space(-1)", "mismatch"},
           {"jet_chr(39)", "'"},
           {"jet_chrw(8364)", "€"},
           {"jet_chr(-1)", "mismatch"},
           {"jet_ascw('€')", "8364"},
           {"jet_asc('')", "mismatch"},
           {"jet_hex(255)", "FF"}});
}

TEST_F(FunctionsTest, SearchingIgnoresCase) {
    Check({{"jet_instr('Area', 'R')", "2"},
           {"jet_instr('ÉCOLE é', 'école')", "1"},
           {"jet_instr('日本É', 'é')", "3"},
           {"jet_instr('abc', 'x')", "0"},
           {"jet_instr('abc', '')", "1"},
           {"jet_instr('', 'a')", "0"},
           {"jet_instr(3, 'abcabc', 'B')", "5"},
           {"jet_instr(9, 'abc', 'a')", "0"},
           {"jet_instr(1, 'abC', 'c', 0)", "0"},
           {"jet_instr(1, 'abC', 'c', 1)", "3"},
           {"jet_instr('a,B', 'b', 0)", "0"},
           {"jet_instr(Null, 'a')", "Null"},
           {"jet_instrrev('abcABC', 'b')", "5"},
           {"jet_instrrev('abcabc', 'c', 5)", "3"},
           {"jet_replace('aXbx', 'x', '--')", "a--b--"},
           {"jet_replace('ÉaÉb', 'é', 'e')", "eaeb"},
           {"jet_replace('aaa', 'a', 'b', 1, 2)", "bba"},
           {"jet_replace('abc', '', 'x')", "abc"},
           {"jet_strcomp('A', 'a')", "0"},
           {"jet_strcomp('A', 'a', 0)", "-1"},
           {"jet_ucase('straße é')", "STRASSE É"},
           {"jet_lcase('ID É')", "id é"}});
}

TEST_F(FunctionsTest, LikeKnowsItsWildcards) {
    Check({{"jet_like('Area', 'aREA')", "-1"}, {"jet_like('Area', 'A*')", "-1"},   {"jet_like('Area', '*x*')", "0"},
           {"jet_like('', '*')", "-1"},        {"jet_like('', '?')", "0"},         {"jet_like('é', '?')", "-1"},
           {"jet_like('a1', 'a#')", "-1"},     {"jet_like('aa', 'a#')", "0"},      {"jet_like('b', '[a-c]')", "-1"},
           {"jet_like('É', '[é]')", "-1"},     {"jet_like('d', '[!a-c]')", "-1"},  {"jet_like('b', '[!a-c]')", "0"},
           {"jet_like('a*b', 'a[*]b')", "-1"}, {"jet_like('axb', 'a[*]b')", "0"},  {"jet_like('a[b', 'a[b')", "-1"},
           {"jet_like('100%', '100%')", "-1"}, {"jet_like('a-b', 'a[-]b')", "-1"}, {"jet_like('abcbcd', '*bcd')", "-1"},
           {"jet_like(Null, '*')", "Null"},    {"jet_like('ab', '[]')", "0"}});
}

TEST_F(FunctionsTest, ConversionsFailOnWhatTheyCannotRead) {
    Check({{"jet_cdbl(' 1.5 ')", "1.5"},
           {"jet_cdbl('')", "mismatch"},
           {"jet_cdbl('abc')", "mismatch"},
           {"jet_cdbl('1,5')", "mismatch"},
           {"jet_cdbl(Null)", "mismatch"},
           {"jet_cstr(Null)", "mismatch"},
           {"jet_cstr(0.10)", "0.1"},
           {"jet_cstr(64.0)", "64"},
           {"jet_clng('2.5')", "2"},
           {"jet_clng(3.5)", "4"},
           {"jet_clng(3000000000)", "mismatch"},
           {"jet_cint(40000)", "mismatch"},
           {"jet_csng(0.1)", "0.1"},
           {"jet_cbool('True')", "-1"},
           {"jet_cbool(2)", "-1"},
           {"jet_cbool('x')", "mismatch"},
           {"jet_val('12abc')", "12"},
           {"jet_val(' 1 2.5')", "12.5"},
           {"jet_val('abc')", "0"},
           {"jet_val('1e2')", "100"},
           {"jet_val(Null)", "Null"},
           {"jet_isnumeric('1e3')", "-1"},
           {"jet_isnumeric('')", "0"},
           {"jet_isnumeric(Null)", "0"},
           {"jet_isnull(Null)", "-1"},
           {"jet_isnull('')", "0"},
           {"jet_nz(Null, 5)", "5"},
           {"jet_choose(2, 'a', 'b')", "b"},
           {"jet_choose(3, 'a', 'b')", "Null"},
           {"jet_switch(0, 'a', 1, 'b')", "b"},
           {"jet_str(5)", " 5"},
           {"jet_bool('x')", "mismatch"},
           {"jet_bool(Null)", "0"},
           {"jet_bool(7)", "-1"},
           {"jet_bool('no')", "0"}});
}

TEST_F(FunctionsTest, NumbersAreRoundedAsTheDialectDoes) {
    Check({{"jet_round(2.5)", "2"},
           {"jet_round(3.5)", "4"},
           {"jet_round(2.675, 2)", "2.68"},
           {"jet_round(2.665, 2)", "2.66"},
           {"jet_round(-2.5)", "-2"},
           {"jet_round('2.25', 1)", "2.2"},
           {"jet_round(1, -1)", "mismatch"},
           {"jet_int(-1.5)", "-2"},
           {"jet_fix(-1.5)", "-1"},
           {"jet_int('x')", "mismatch"},
           {"jet_abs(-3)", "3"},
           {"jet_sgn(-0.1)", "-1"},
           {"jet_sqr(-1)", "mismatch"},
           {"jet_log(0)", "mismatch"},
           {"jet_exp(1000)", "mismatch"},
           {"jet_int(Null)", "Null"}});
}

TEST_F(FunctionsTest, OperatorsWithNullTextAndZero) {
    Check({{"jet_concat('a', Null)", "a"},
           {"jet_concat(Null, Null)", "Null"},
           {"jet_concat(1, 0.5)", "10.5"},
           {"jet_add('a', 'b')", "ab"},
           {"jet_add('a', Null)", "Null"},
           {"jet_add('1', 2)", "3"},
           {"jet_add('a', 2)", "mismatch"},
           {"jet_divide(1, 4)", "0.25"},
           {"jet_divide(1, 0)", "division"},
           {"jet_divide(1, '0')", "division"},
           {"jet_divide(Null, 0)", "Null"},
           {"jet_intdiv(7, 2)", "3"},
           {"jet_intdiv(-7, 2)", "-3"},
           {"jet_intdiv(7, 0.4)", "division"},
           {"jet_mod(-7, 3)", "-1"},
           {"jet_mod(7, 0)", "division"},
           {"jet_power(2, 10)", "1024"},
           {"jet_power(0, -1)", "division"},
           {"jet_power(-8, 0.5)", "mismatch"},
           {"jet_number('1.5')", "1.5"},
           {"jet_number('x')", "mismatch"},
           {"jet_mod(-9223372036854775808, -1)", "0"},
           {"jet_add(9223372036854775807, 1)", "9.223372036854776E+18"}});
}

TEST_F(FunctionsTest, FormatFollowsItsMask) {
    Check({{"jet_format(0.5, '#.00')", ".50"},
           {"jet_format(1234.565, '#.00')", "1234.57"},
           {"jet_format(0, '#')", ""},
           {"jet_format(2.5, '0')", "3"},
           {"jet_format(-2.5, '0')", "-3"},
           {"jet_format(-0.001, '0.00')", "0.00"},
           {"jet_format(7, '0.00')", "7.00"},
           {"jet_format(0.05, '#0.0')", "0.1"},
           {"jet_format(1234567.5, '#,#0')", "1,234,568"},
           {"jet_format(5, '#,#0')", "5"},
           {"jet_format(1234.5, '#,##0.00')", "1,234.50"},
           {"jet_format(1234.5, 'Standard')", "1,234.50"},
           {"jet_format(0.256, 'percent')", "25.60%"},
           {"jet_format(3, 'Fixed')", "3.00"},
           {"jet_format('12.5', '0.0')", "12.5"},
           {"jet_format('abc', '0.0')", "abc"},
           {"jet_format(Null, '0')", "Null"},
           {"jet_format(999.999, '0.00')", "1000.00"},
           {"jet_format(2.675, '0.00')", "2.68"},
           {"jet_format(1e21, '0')", "1000000000000000000000"},
           {"jet_format(5, '000')", "005"},
           {"jet_format(-5, '0;(0)')", "(5)"},
           {"jet_format(0, '0;-0;\"none\"')", "none"},
           {"jet_format(1.5, '0.##')", "1.5"},
           {"jet_format(5, '.00')", "5.00"},
           {"jet_format(0.5, '.00')", ".50"},
           {"jet_format('2001-02-03', 'dd/mm/yyyy')", "03/02/2001"},
           {"jet_format('2001-02-03 04:05:06', 'yyyy.mm.dd hh:nn:ss')", "2001.02.03 04:05:06"},
           {"jet_format('2001-02-03 04:05:06', 'hh:mm')", "04:05"},
           {"jet_format('2001-02-03', 'd mmm yy')", "3 Feb 01"},
           {"jet_format('x', 'yyyy')", "x"}});
}

TEST_F(FunctionsTest, DatesAreTextsThatSort) {
    Check({{"jet_cdate('2/28/2001 13:05')", "2001-02-28 13:05:00"},
           {"jet_cdate('2001-02-29')", "mismatch"},
           {"jet_cdate('soon')", "mismatch"},
           {"jet_cdate(0)", "1899-12-30"},
           {"jet_cdate(36526.5)", "2000-01-01 12:00:00"},
           {"jet_isdate('2000-13-01')", "0"},
           {"jet_isdate('2000-12-01')", "-1"},
           {"jet_year('1999-12-31')", "1999"},
           {"jet_month('12/31/1999')", "12"},
           {"jet_hour('2000-01-01 23:59:58')", "23"},
           {"jet_weekday('2000-01-01')", "7"},
           {"jet_dateserial(2000, 14, 0)", "2001-01-31"},
           {"jet_dateadd('m', 1, '2000-01-31')", "2000-02-29"},
           {"jet_dateadd('d', -1, '2000-01-01')", "1999-12-31"},
           {"jet_dateadd('yyyy', 9999, '2000-01-01')", "mismatch"},
           {"jet_datediff('m', '1999-12-31', '2000-01-01')", "1"},
           {"jet_datediff('d', '2000-02-28', '2000-03-01')", "2"},
           {"jet_datediff('yyyy', '1999-12-31', '2000-01-01')", "1"},
           {"jet_datepart('q', '2000-05-01')", "2"},
           {"jet_timeserial(25, 0, 0)", "01:00:00"},
           {"jet_dateadd('x', 1, '2000-01-01')", "mismatch"},
           {"jet_len(jet_now())", "19"},
           {"jet_year(Null)", "Null"}});
}

TEST_F(FunctionsTest, AggregatesReadTextsAsNumbers) {
    jet::Run(database.get(), "CREATE TABLE T (v)");
    EXPECT_EQ(Of("jet_sum(v) FROM T"), "Null");
    EXPECT_EQ(Of("jet_avg(v) FROM T"), "Null");
    EXPECT_EQ(Of("jet_first(v) FROM T"), "Null");
    jet::Run(database.get(), "INSERT INTO T VALUES ('2'), (Null), (4), ('6.0')");
    Check({{"jet_sum(v) FROM T", "12"},
           {"jet_avg(v) FROM T", "4"},
           {"jet_stdev(v) FROM T", "2"},
           {"jet_var(v) FROM T", "4"},
           {"jet_varp(v) * 3 FROM T", "8"},
           {"jet_first(v) FROM T", "2"},
           {"jet_last(v) FROM T", "6.0"},
           {"jet_stdev(v) FROM T WHERE v = '2'", "Null"},
           {"jet_stdevp(v) FROM T WHERE v = '2'", "0"}});
    jet::Run(database.get(), "INSERT INTO T VALUES ('n/a')");
    Check({{"jet_sum(v) FROM T", "mismatch"}, {"jet_stdev(v) FROM T", "mismatch"}});
    jet::Run(database.get(), "DELETE FROM T");
    jet::Run(database.get(), "INSERT INTO T VALUES (1e100), (1), (-1e100)");
    EXPECT_EQ(Of("jet_sum(v) FROM T"), "1"); // what plain adding loses
    jet::Run(database.get(), "DELETE FROM T");
    jet::Run(database.get(), "INSERT INTO T VALUES (9223372036854775807), (1)");
    EXPECT_EQ(Of("jet_sum(v) FROM T"), "9.223372036854776E+18");
}

TEST_F(FunctionsTest, NewGuidsAreTextsInBraces) {
    const std::string guid = Of("jet_newguid()");
    EXPECT_EQ(guid.size(), 38U);
    EXPECT_EQ(guid.front(), '{');
    EXPECT_EQ(guid[15], '4');
    EXPECT_EQ(Of("COUNT(DISTINCT g) FROM (SELECT jet_newguid() AS g FROM (VALUES (1), (2), (3)))"), "3");
}

TEST(FindFunction, KnowsNamesWhateverTheirCase) {
    EXPECT_EQ(FindFunction("None"), nullptr);
    EXPECT_EQ(FindFunction(""), nullptr);
    EXPECT_EQ(FindFunction("$"), nullptr);
    EXPECT_EQ(FindFunction("averyverylongnamethatisnofunction"), nullptr);
    ASSERT_NE(FindFunction("MID"), nullptr);
    EXPECT_EQ(FindFunction("Mid$"), FindFunction("mid"));
    EXPECT_TRUE(FindFunction("StDev")->aggregate);
    EXPECT_EQ(FindFunction("IsNull")->result, FunctionResult::YesNo);
}

} // namespace
} // namespace jet
