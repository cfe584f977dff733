#include "jet/sql/ParserBase.h"

#include "jet/values/Collation.h"

#include <algorithm>
#include <array>

namespace jet {

namespace {

constexpr int kDeepestNesting = 200;
constexpr int kMostChained = 2000;

// Words that end a name where one may stand: without them "FROM Data WHERE" would make WHERE an alias.
constexpr std::array kReserved = {"all",    "alter",  "and",      "as",          "asc",   "between", "by",     "create",
                                  "delete", "desc",   "distinct", "distinctrow", "drop",  "eqv",     "exists", "false",
                                  "from",   "group",  "having",   "imp",         "in",    "inner",   "insert", "into",
                                  "is",     "join",   "left",     "like",        "mod",   "not",     "null",   "on",
                                  "or",     "order",  "outer",    "pivot",       "right", "select",  "set",    "true",
                                  "union",  "update", "values",   "where",       "xor"};

} // namespace

const Token& ParserBase::ahead(std::size_t count) const {
    return tokens_[std::min(at_ + count, tokens_.size() - 1)];
}

bool ParserBase::isWord(const Token& token, std::string_view word) {
    return token.kind == TokenKind::Name && token.text.size() == word.size() &&
           std::equal(word.begin(), word.end(), token.text.begin(), [](char a, char b) { return a == LowerAscii(b); });
}

bool ParserBase::isSymbol(std::string_view symbol) const {
    return current().kind == TokenKind::Symbol && current().text == symbol;
}

bool ParserBase::isName() const {
    if (current().kind == TokenKind::BracketedName) return true;
    return current().kind == TokenKind::Name &&
           std::ranges::none_of(kReserved, [this](std::string_view word) { return isWord(word); });
}

bool ParserBase::takeWord(std::string_view word) {
    if (!isWord(word)) return false;
    next();
    return true;
}

bool ParserBase::takeSymbol(std::string_view symbol) {
    if (!isSymbol(symbol)) return false;
    next();
    return true;
}

void ParserBase::expectWord(std::string_view word) {
    if (!takeWord(word)) fail("Expected '" + UpperCased(word) + "'");
}

void ParserBase::expectSymbol(std::string_view symbol) {
    if (!takeSymbol(symbol)) fail("Expected '" + std::string(symbol) + "'");
}

std::string ParserBase::expectName(const char* what) {
    if (!isName()) fail(std::string("Expected ") + what);
    std::string name = current().text;
    if (name.empty()) fail("A name can't be empty");
    next();
    return name;
}

void ParserBase::countChained() {
    if (++chained_ > kMostChained) fail("The statement has too many operators");
}

ParserBase::Nesting::Nesting(ParserBase& parser) : parser_(parser) {
    if (++parser_.depth_ > kDeepestNesting) {
        --parser_.depth_;
        parser.fail("The statement is nested too deeply");
    }
}

} // namespace jet
