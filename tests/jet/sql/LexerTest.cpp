#include "jet/sql/Lexer.h"

#include "jet/values/Error.h"

#include <gtest/gtest.h>

namespace jet {

namespace {

// Each token as a letter for its kind and its text: n name, b bracketed name, t text, 1 number, d date, s symbol, l
// list.
std::string Shown(std::string_view sql) {
    std::string shown;
    for (const Token& token : Tokenize(sql)) {
        if (token.kind == TokenKind::End) break;
        shown += (shown.empty() ? "" : " ") + std::string(1, "nbt1dsl"[static_cast<int>(token.kind)]) + token.text;
    }
    return shown;
}

std::string FailureOf(std::string_view sql) {
    try {
        return Shown(sql);
    } catch (const Error& error) {
        EXPECT_EQ(error.number(), ErrorNumber::SyntaxError);
        const std::string text = error.what();
        return text.substr(text.find("(line"));
    }
}

} // namespace

TEST(LexerTest, CutsStatementsIntoTokens) {
    const struct {
        const char* sql;
        const char* tokens;
    } Cases[] = {
        {"", ""},
        {" \t\r\n ", ""},
        {"SELECT a_1.[b c] , _x", "nSELECT na_1 s. bb c s, n_x"},
        {"'it''s' \"say \"\"so\"\"\" 'a\"b'", "tit's tsay \"so\" ta\"b"},
        {"1 .5 2. 1e3 1E-2 1.5e+10 1e x", "11 1.5 12. 11e3 11E-2 11.5e+10 11 ne nx"},
        {"a<=b>=c<>d!=e<f", "na s<= nb s>= nc s<> nd s<> ne s< nf"},
        {"[T]![F] `q r`", "bT s. bF bq r"},
        {"#2001-02-03# 5#1/2/2003#", "d2001-02-03 15 d1/2/2003"},
        {"čás+Ж", "nčás s+ nЖ"},
        {"a IN ( 1,-2 ) IN(x) in (3)", "na nIN s( l 1,-2  s) nIN s( nx s) nin s( l3 s)"},
        {"IN (1.5) [in] (1) IN (01)", "nIN s( 11.5 s) bin s( 11 s) nIN s( 101 s)"},
        {"5--3\\2^-1&'x'", "15 s- s- 13 s\\ 12 s^ s- 11 s& tx"},
    };
    for (const auto& each : Cases)
        EXPECT_EQ(Shown(each.sql), each.tokens) << each.sql;
}

TEST(LexerTest, SaysWhereATextEndsNowhere) {
    const struct {
        std::string sql;
        const char* place;
    } Cases[] = {
        {"SELECT 'abc", "(line 1, column 8)."}, {"a\n  [b", "(line 2, column 3)."},
        {"'a\nb' \"", "(line 2, column 4)."},   {"#2001", "(line 1, column 1)."},
        {"a ? b", "(line 1, column 3)."},       {std::string("a\0b", 3), "(line 1, column 2)."},
        {"a {", "(line 1, column 3)."},
    };
    for (const auto& each : Cases)
        EXPECT_EQ(FailureOf(each.sql), each.place) << each.sql;
}

} // namespace jet
